#include "ui/resize.h"

#include <cassert>

namespace bromvale {

void resizeControl(Form& form, const ResizeRow& row) {
    Control* control = form.find(row.control);
    assert(control);
    const int down = form.scaleHeight() - row.less;
    const int across = form.scaleWidth() - row.less;
    switch (row.what) {
        case Stretch::Height: return control->setHeight(down);
        case Stretch::Top: return control->setTop(down);
        case Stretch::Width: return control->setWidth(across);
        case Stretch::Left: return control->setLeft(across);
        case Stretch::RightEnd: return static_cast<Line*>(control)->setX2(across);
        case Stretch::FirstPanel: return static_cast<StatusBar*>(control)->setPanelWidth(1, across);
    }
}

}  // namespace bromvale
