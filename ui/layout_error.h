#pragma once
#include <span>

#include "ui/layout.h"

namespace bromvale {

// The error dialog as data.
[[nodiscard]] std::span<const ControlRow> layoutError();
// In the order stop, exclamation, question, information.
[[nodiscard]] std::span<const ImageRow> layoutErrorImages();

inline constexpr int kErrorInnerWidth = 6570;
// Outer heights with the frame of the systems that the dialog was drawn on: closed it shows the picture, the
// text and the two upper buttons only. Where the frame is thicker or thinner the heights follow, or a button
// would be cut off or the edge of the details be seen.
inline constexpr int kErrorHeightClosed = 1450;
inline constexpr int kErrorHeightOpen = 3630;
inline constexpr int kErrorFrameHeight = 375;

}  // namespace bromvale
