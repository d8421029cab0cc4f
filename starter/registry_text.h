// Reading of files of the registry editor in the form REGEDIT4, strictly: texts alone, nothing to be deleted.
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::starter {

// In bytes of the code page.
struct TextKey {
    struct Value {
        std::string name;  // empty: the default value
        std::string data;  // with the NUL at its end, where the file has one
    };
    std::string path;
    std::vector<Value> values;
};

struct RegistryText {
    struct Fault {
        std::size_t line;  // from 1
        std::string reason;
    };
    std::vector<TextKey> keys;  // none with a fault
    std::optional<Fault> fault;
    bool hasEndMark = false;  // the last line is kEndMark
};

// A comment that the starter writes at the end of its files.
inline constexpr std::string_view kEndMark = "; Ende";

inline constexpr std::size_t kMostValues = 1000;  // of a key

// Takes the first line that is wrong for the whole: no file is read in part.
[[nodiscard]] RegistryText readRegistryText(std::string_view bytes);

}  // namespace bromvale::starter
