#include "ui/layout_main.h"

namespace bromvale {
namespace {

using K = ControlKind;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr ControlRow kRows[] = {
    {"Frame4", K::Frame, "Installierte Programme", nullptr, kPagePlace, 22, kHidden | kArrowPointer},
    {"cmdDeinstallRefresh", K::Button, "Aktualisieren", "Frame4", {1680, 6000, 1335, 375}, 25, 0},
    {"cmdDeinstall", K::Button, "Deinstallieren", "Frame4", {240, 6000, 1335, 375}, 24, 0},
    {"lvwDeinstall", K::ListView, "", "Frame4", {240, 360, 7815, 5535}, 23, kMultiSelect},
};
// clang-format on

}  // namespace

std::span<const ControlRow> layoutPrograms() {
    return kRows;
}

}  // namespace bromvale
