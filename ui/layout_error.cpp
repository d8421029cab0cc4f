#include "ui/layout_error.h"
#include "resources/resource_ids.h"

namespace bromvale {
namespace {

using K = ControlKind;

// The two labels below txtDetails are never seen: they keep what a report sends.
// clang-format off
constexpr ControlRow kRows[] = {
    {"imgList", K::ImageList, "", nullptr, {}, -1, 0},
    {"imgErrImg", K::Picture, "", nullptr, {240, 240, 615, 495}, -1, 0},
    {"lblErrDesc", K::Label, "ErrDesc", nullptr, {1080, 240, 3855, 720}, 6, 0},
    {"cmdSchließen", K::Button, "&Schließen", nullptr, {5160, 120, 1215, 375}, 0, 0},
    {"cmdDetails", K::Button, "Details >>", nullptr, {5160, 600, 1215, 375}, 1, 0},
    {"txtDetails", K::TextBox, "", nullptr, {240, 1080, 6135, 1575}, 2, kLocked | kMultiLine | kGreyed},
    {"lblErrNr", K::Label, "lblErrNr", nullptr, {1080, 1200, 615, 255}, 7, 0},
    {"lblErrHow", K::Label, "lblErrHow", nullptr, {1920, 1200, 4455, 255}, 8, 0},
    {"lblEMail", K::Label, "E-Mail-Adresse:", nullptr, {240, 2840, 1215, 255}, 3, kRightAligned},
    {"txtEMail", K::TextBox, "", nullptr, {1560, 2820, 3375, 285}, 4, 0},
    {"cmdReportSenden", K::Button, "&Report senden", nullptr, {5160, 2760, 1215, 375}, 5, 0},
};
// clang-format on

constexpr ImageRow kImages[] = {
    {"imgList", "Stop", BROMVALE_ICON_ERROR_FIRST},
    {"imgList", "Exclamation", BROMVALE_ICON_ERROR_FIRST + 1},
    {"imgList", "Question", BROMVALE_ICON_ERROR_FIRST + 2},
    {"imgList", "Information", BROMVALE_ICON_ERROR_FIRST + 3},
};

}  // namespace

std::span<const ControlRow> layoutError() {
    return kRows;
}
std::span<const ImageRow> layoutErrorImages() {
    return kImages;
}

}  // namespace bromvale
