#pragma once
#include <span>

#include "ui/layout.h"

namespace bromvale {

// The error dialog as data.
[[nodiscard]] std::span<const ControlRow> layoutError();
// In the order stop, exclamation, question, information.
[[nodiscard]] std::span<const ImageRow> layoutErrorImages();

inline constexpr int kErrorInnerWidth = 6570;
// Outer heights, with the frame of the systems that the dialog was drawn on: closed it shows the picture, the
// text and the two upper buttons only.
inline constexpr int kErrorHeightClosed = 1450;
inline constexpr int kErrorHeightOpen = 3630;
// Inner heights without which the lowest control would be cut off, for systems with a thicker frame.
inline constexpr int kErrorInnerClosed = 1035;
inline constexpr int kErrorInnerOpen = 3195;

}  // namespace bromvale
