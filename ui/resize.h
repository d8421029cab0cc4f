#pragma once
#include "platform/controls.h"

namespace bromvale {

// What follows the window's inner size.
enum class Stretch {
    Height,
    Width,
    Top,
    Left,
    RightEnd,    // of a line
    FirstPanel,  // width of a status bar's first panel
};

// The property becomes the form's inner height (Height, Top) or inner width (the others), less `less` twips.
struct ResizeRow {
    const char* control;
    Stretch what;
    int less;
};

void resizeControl(Form& form, const ResizeRow& row);

}  // namespace bromvale
