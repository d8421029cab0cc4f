#pragma once
#include <optional>
#include <string>

#include "platform/registry.h"

namespace bromvale {

// A 32-bit program on a 64-bit Windows is shown another half of the registry under the usual names. True
// there, and only there a key has to be asked where it lies.
[[nodiscard]] bool seesAnotherHalf();

// Where the opened key lies, as a 64-bit registry editor names it:
// "HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\...". Nothing where the system doesn't tell.
[[nodiscard]] std::optional<std::u16string> realKeyPath(HKEY key);

}  // namespace bromvale
