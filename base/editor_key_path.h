#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace bromvale {

// The registry editor's name for the system's own one, "\REGISTRY\MACHINE\..." or "\REGISTRY\USER\...".
// Nothing for any other.
[[nodiscard]] std::optional<std::u16string> editorKeyPath(std::u16string_view systemPath);

}  // namespace bromvale
