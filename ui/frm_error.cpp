#include "ui/frm_error.h"

#include <array>
#include <string>

#include "core/log.h"
#include "core/settings.h"
#include "platform/help.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "ui/layout_error.h"

namespace bromvale {
namespace {

constexpr std::string_view kMoreDetails = "Details >>";
constexpr std::string_view kLessDetails = "<< Details";
constexpr std::string_view kQuit = "Beenden";
constexpr std::int32_t kNotToBeSent = 10001;
constexpr DWORD kTrayDelete = 2;
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
    cmdDetails.onClick = [this] { cmdDetails_Click(); };
    cmdSchließen.onClick = [this] { cmdSchließen_Click(); };
    cmdReportSenden.onClick = [this] { cmdReportSenden_Click(); };
}

FrmError& frmError() {
    static FrmError& form = *new FrmError;
    return form;
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
    buildPage(*this, layoutError());
    buildImages(*this, layoutErrorImages());
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
    Shell_NotifyIconA(kTrayDelete, &neverFilled);
    HtmlHelpA(window(), "", kHelpCloseAll, 0);
    TerminateProcess(GetCurrentProcess(), 0);
}

}  // namespace bromvale
