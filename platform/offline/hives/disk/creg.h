// Registries of Windows 95, 98 and ME: SYSTEM.DAT, USER.DAT and CLASSES.DAT, read by the library libcreg.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

class Registry;

struct CregValue {
    std::u16string name;  // empty: the default value
    std::uint32_t type = 0;
    std::string data;  // as the file has it: texts in the machine's code page, REG_SZ without a NUL
};

struct CregKey {
    std::u16string name;
    std::vector<CregValue> values;
    std::vector<CregKey> subKeys;

    // Without case; null where there is none. `path` may hold several names, with backslashes.
    [[nodiscard]] const CregKey* find(std::u16string_view path) const;
    [[nodiscard]] const CregValue* value(std::u16string_view name) const;
};

struct CregTree {
    CregKey root;
    std::size_t keys = 0;  // with the root
    std::size_t values = 0;
};

// Whether the program was built with the library.
[[nodiscard]] bool hasCregReader();

// All of a file of the host, or why it can't be read (English). A file that is damaged anywhere is refused:
// a circle or a key of two parents as well. The code page is not in the file.
[[nodiscard]] std::variant<CregTree, std::string> readCreg(const std::string& path, UINT codePage = 1252);

// Whether a file begins as such a registry does.
[[nodiscard]] bool isCreg(std::string_view start);

// Puts what is in the key below `path` of the registry, values as Windows 9x gives them: with the NUL that
// its texts have there. How many keys and values the registry could not take.
std::size_t addCreg(Registry& registry, const std::u16string& path, const CregKey& key, UINT codePage = 1252);

}  // namespace bromvale::offline
