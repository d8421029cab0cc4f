#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "starter/machine.h"

namespace bromvale::starter {

inline constexpr std::uint32_t kTextType = 1;  // REG_SZ

// Of plain ASCII.
[[nodiscard]] std::u16string widened(std::string_view ascii);
// Without regard to the case of plain letters.
[[nodiscard]] bool isSameName(std::string_view one, std::string_view other);

[[nodiscard]] std::string toUtf16Bytes(std::u16string_view text);
[[nodiscard]] std::u16string fromUtf16Bytes(std::string_view bytes);

[[nodiscard]] Value textValue(std::u16string name, std::u16string_view text);
// Of the value of that name, up to its NUL; nothing where there is none or it is no text.
[[nodiscard]] std::optional<std::u16string> textOf(const Key& key, std::u16string_view name);

}  // namespace bromvale::starter
