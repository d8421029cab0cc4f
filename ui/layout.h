#pragma once
#include <span>

#include "platform/controls.h"

namespace bromvale {

// What a row of a layout table can say beside place and caption.
enum LayoutFlag : unsigned {
    kDisabled = 1u << 0,
    kHidden = 1u << 1,
    kDefaultButton = 1u << 2,
    kCancelButton = 1u << 3,
    kMultiLine = 1u << 4,
    kLocked = 1u << 5,
    kRightAligned = 1u << 6,
    kCentred = 1u << 7,
    kGreyed = 1u << 8,
    kSortedItems = 1u << 9,
    kMultiSelect = 1u << 10,
    kArrowPointer = 1u << 11,
    kTahoma = 1u << 12,
    kMsSansSerif = 1u << 13,
};

// One control at design. Twips, relative to the container (null: the form). A line's width and height lead to
// its second point. The container of a menu entry is its menu.
struct ControlRow {
    const char* name;
    ControlKind kind;
    const char* caption;
    const char* container;
    Place place;
    int tab;  // -1: none
    unsigned flags;
};

// A column of a list or a panel of a status bar, in order.
struct ColumnRow {
    const char* control;
    const char* text;
    int width;  // twips
};

// A picture of an image list, in order.
struct ImageRow {
    const char* list;
    const char* key;
    int resource;
};

// Puts every control of the table into its design state. The form owns a control of each name and kind.
void buildPage(Form& form, std::span<const ControlRow> rows);
// All columns of the lists, or all panels of the status bars, that the table names.
void buildColumns(Form& form, std::span<const ColumnRow> rows);
void buildImages(Form& form, std::span<const ImageRow> rows);

}  // namespace bromvale
