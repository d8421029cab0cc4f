#include "ui/frm_error.h"

#include <array>
#include <string>

#include "core/log.h"
#include "core/settings.h"
#include "platform/machine.h"
#include "platform/shell.h"
#include "resources/resource_ids.h"
#include "ui/rows.h"

namespace bromvale {
namespace {

using P = FrmError;

// The two labels below txtDetails are never seen: they keep what a report sends.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::imgList>("", {}, -1, 0),
    row<P, &P::imgErrImg>("", {240, 240, 615, 495}, -1, 0),
    row<P, &P::lblErrDesc>("ErrDesc", {1080, 240, 3855, 720}, 6, 0),
    row<P, &P::cmdSchließen>("&Schließen", {5160, 120, 1215, 375}, 0, 0,
        on<&Button::onClick, &P::cmdSchließen_Click>()),
    row<P, &P::cmdDetails>("Details >>", {5160, 600, 1215, 375}, 1, 0,
        on<&Button::onClick, &P::cmdDetails_Click>()),
    row<P, &P::txtDetails>("", {240, 1080, 6135, 1575}, 2, kLocked | kMultiLine | kGreyed),
    row<P, &P::lblErrNr>("lblErrNr", {1080, 1200, 615, 255}, 7, 0),
    row<P, &P::lblErrHow>("lblErrHow", {1920, 1200, 4455, 255}, 8, 0),
    row<P, &P::lblEMail>("E-Mail-Adresse:", {240, 2840, 1215, 255}, 3, kRightAligned),
    row<P, &P::txtEMail>("", {1560, 2820, 3375, 285}, 4, 0),
    row<P, &P::cmdReportSenden>("&Report senden", {5160, 2760, 1215, 375}, 5, 0,
        on<&Button::onClick, &P::cmdReportSenden_Click>()),
};
// clang-format on

constexpr ImageRow kImages[] = {
    {"Stop", BROMVALE_ICON_ERROR_FIRST},
    {"Exclamation", BROMVALE_ICON_ERROR_FIRST + 1},
    {"Question", BROMVALE_ICON_ERROR_FIRST + 2},
    {"Information", BROMVALE_ICON_ERROR_FIRST + 3},
};

constexpr int kErrorInnerWidth = 6570;
// Outer heights with the frame of the systems that the dialog was drawn on: closed it shows the picture, the
// text and the two upper buttons only. Where the frame is thicker or thinner the heights follow, or a button
// would be cut off or the edge of the details be seen.
constexpr int kErrorHeightClosed = 1450;
constexpr int kErrorHeightOpen = 3630;
constexpr int kErrorFrameHeight = 375;

constexpr std::string_view kMoreDetails = "Details >>";
constexpr std::string_view kLessDetails = "<< Details";
constexpr std::string_view kQuit = "Beenden";
constexpr std::int32_t kNotToBeSent = 10001;
constexpr unsigned kHelpCloseAll = 18;

struct StylePicture {
    std::int32_t style;
    int picture;
};
constexpr std::array kPictures{
    StylePicture{kStyleStop, 1},
    StylePicture{kStyleExclamation, 2},
    StylePicture{kStyleQuestion, 3},
    StylePicture{kStyleInformation, 4},
};

int heightOf(bool open) {
    const int frame = frameSize(BorderStyle::FixedDialog).height;
    return (open ? kErrorHeightOpen : kErrorHeightClosed) - kErrorFrameHeight + frame;
}

}  // namespace

FrmError::FrmError() : Form("frmError") {
    connectRows(*this, kRows);
}

FrmError& frmError() {
    static FrmError& form = *new FrmError;
    return form;
}

std::span<const Row<FrmError>> FrmError::rows() {
    return kRows;
}

void registerErrorDialog() {
    setErrorDialog([](std::string_view modul, std::string_view funktion, std::int32_t nummer,
                      std::string_view beschreibung,
                      std::int32_t stil) { frmError().fill(modul, funktion, nummer, beschreibung, stil); });
}

void FrmError::design() {
    setBorderStyle(BorderStyle::FixedDialog);
    setCaption("Fehlerbericht");
    setScaleSize(kErrorInnerWidth, kErrorHeightOpen);
    designRows(*this, kRows);
    txtDetails.setSpokenName("Einzelheiten");
    setImages(imgList, kImages);
    imgErrImg.setImage(nullptr, 0);
    setHeight(heightOf(false));
    centreOnScreen();
}

void FrmError::Form_Load() {
    setHeight(heightOf(false));
    txtEMail.setText(EMail);
    trace("frmError", "Form_Load", "");
}

void FrmError::fill(std::string_view modul, std::string_view funktion, std::int32_t nummer,
                    std::string_view beschreibung, std::int32_t stil) {
    load();
    const std::string module(modul);
    const std::string routine(funktion);
    const std::string number = std::to_string(nummer);
    const std::string description(beschreibung);
    lblErrDesc.setCaption(description);
    lblErrNr.setCaption(number);
    lblErrHow.setCaption("Modul: " + module + " Funktion: " + routine);
    // " Funktion: " above and " Function: " here: both are read by people who compare reports.
    txtDetails.setText("Laufzeitfehler: " + number + "\r\n\r\nFehlerbeschreibung:\r\n" + description +
                       "\r\n\r\nModul: " + module + " Function: " + routine);
    if (stil == kStyleStop) cmdSchließen.setCaption(kQuit);  // stays until the dialog is loaded anew
    for (const StylePicture& row : kPictures) {
        if (row.style == stil) imgErrImg.setImage(&imgList, row.picture);
    }
    if (nummer == kNotToBeSent) {
        for (Control* control :
             std::initializer_list<Control*>{&cmdReportSenden, &cmdSchließen, &lblEMail, &txtEMail}) {
            control->setEnabled(false);
        }
    }
    show();
}

void FrmError::cmdDetails_Click() {
    if (cmdDetails.caption() == kLessDetails) {
        setHeight(heightOf(false));
        cmdDetails.setCaption(kMoreDetails);
    } else {
        cmdDetails.setCaption(kLessDetails);
        setHeight(heightOf(true));
    }
}

void FrmError::cmdSchließen_Click() {
    trace("frmError", "cmdSchließen_Click", [&] { return cmdSchließen.caption() + " geklickt"; });
    if (cmdSchließen.caption() == kQuit) {
        cmdBeenden_Click();
    } else {
        unload();
    }
}

void FrmError::cmdBeenden_Click() {
    trace("frmError", "cmdBeenden_Click", "");
    unloadAllForms();  // with the main window loaded, the process ends here
    NOTIFYICONDATAA neverFilled{};
    Shell_NotifyIconA(NIM_DELETE, &neverFilled);
    HtmlHelpA(window(), "", kHelpCloseAll, 0);
    TerminateProcess(GetCurrentProcess(), 0);
}

}  // namespace bromvale
