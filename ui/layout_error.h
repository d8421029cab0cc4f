#pragma once
#include <span>

#include "ui/layout.h"

namespace bromvale {

// The error dialog as data.
[[nodiscard]] std::span<const ControlRow> layoutError();
// In the order stop, exclamation, question, information.
[[nodiscard]] std::span<const ImageRow> layoutErrorImages();

inline constexpr int kErrorInnerWidth = 6570;
// Outer height: the closed dialog shows the picture, the text and the two upper buttons only.
inline constexpr int kErrorHeightClosed = 1450;
inline constexpr int kErrorHeightOpen = 3630;

}  // namespace bromvale
