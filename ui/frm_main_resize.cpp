#include <string_view>

#include "core/handling.h"
#include "ui/frm_main.h"
#include "ui/resize.h"

namespace bromvale {
namespace {

using enum Stretch;

// Frames fill the window right of the bar, a list grows with both sides, what stands below a list follows the
// bottom edge. Each value is the inner height (Height, Top) or width (the others) less a constant. The small
// differences between rows (2300 and 2260, the rule's end 40 short of the list's) are the window's own look.
constexpr ResizeRow kRows[] = {
    {"Menu", Height, 700},
    {"Frame1", Height, 620},
    {"Frame1", Width, 2100},
    {"lvwRegKeys", Height, 1700},
    {"lvwRegKeys", Width, 2550},
    {"cmdStart", Top, 1200},
    {"cmdAbbrechen", Top, 1200},
    {"chbRegKeysShow", Top, 1120},
    {"chbMarkierteKeysEntfernen", Top, 1120},
    {"Frame2", Height, 620},
    {"Frame2", Width, 2100},
    {"lvwBackup", Height, 1700},
    {"lvwBackup", Width, 2550},
    {"cmdBearbeiten", Top, 1200},
    {"cmdEintragen", Top, 1200},
    {"cmdLöschen", Top, 1200},
    {"Frame3", Height, 620},
    {"Frame3", Width, 2100},
    {"Frame4", Height, 620},
    {"Frame4", Width, 2100},
    {"lvwDeinstall", Height, 1700},
    {"lvwDeinstall", Width, 2550},
    {"cmdDeinstall", Top, 1200},
    {"cmdDeinstallRefresh", Top, 1200},
    {"Frame5", Height, 620},
    {"Frame5", Width, 2100},
    {"Frame7", Height, 620},
    {"Frame7", Width, 2100},
    {"Line2", RightEnd, 2350},
    {"lvwOrdnerList", Height, 5700},
    {"lvwOrdnerList", Width, 2550},
    {"cmdOrdnerWählen", Top, 3280},
    {"cmdOrdnerLöschen", Top, 3280},
    {"cmdInhaltLöschen", Top, 3280},
    {"lblTempFileDel", Top, 2750},
    {"chbTempFilesDel", Top, 2300},
    {"chbDelFilePermanent", Top, 2260},
    {"StatusBar", FirstPanel, 5200},
    {"ProgressBar", Left, 2820},
    {"ProgressBar", Top, 215},
};

constexpr int kMinimumHeight = 7800;
constexpr int kMinimumWidth = 10515;

}  // namespace

void FrmMain::Form_Resize() {
    constexpr Tags tags{"frmMain", "Form_Resize"};
    const ReportAnd onFailure{Ending::Leave, tags};
    tags.trace("started");
    attempt(onFailure, [&] {
        // Each assignment that changes the size runs this routine once more, nested.
        if (height() < kMinimumHeight) setHeight(kMinimumHeight);
        if (width() < kMinimumWidth) setWidth(kMinimumWidth);
        for (const ResizeRow& row : kRows) resizeControl(*this, row);
    });
    tags.trace("endet");
}

}  // namespace bromvale
