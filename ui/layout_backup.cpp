#include "ui/layout_main.h"

namespace bromvale {
namespace {

using K = ControlKind;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr ControlRow kRows[] = {
    {"Frame2", K::Frame, "Backup-Bereich", nullptr, kPagePlace, 17, kHidden | kArrowPointer},
    {"cmdLöschen", K::Button, "Löschen", "Frame2", {2640, 6000, 1095, 375}, 21, 0},
    {"cmdEintragen", K::Button, "Eintragen", "Frame2", {1440, 6000, 1095, 375}, 20, 0},
    {"cmdBearbeiten", K::Button, "Bearbeiten", "Frame2", {240, 6000, 1095, 375}, 19, 0},
    {"lvwBackup", K::ListView, "", "Frame2", {240, 360, 7815, 5535}, 18, kMultiSelect},
};
// clang-format on

}  // namespace

std::span<const ControlRow> layoutBackup() {
    return kRows;
}

}  // namespace bromvale
