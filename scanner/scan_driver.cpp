// The button cmdStart: scan, or with the caption "&Entfernen" removal; and cmdAbbrechen.
#include <cstdint>
#include <string>

#include "base/numbers.h"
#include "core/handling.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/events.h"
#include "repair/reboot.h"
#include "scanner/registry_checks.h"
#include "scanner/scan_line.h"
#include "scanner/scan_report.h"
#include "scanner/scan_state.h"
#include "scanner/scan_steps.h"
#include "scanner/search.h"
#include "ui/scan_page.h"

namespace bromvale {

namespace {

constexpr Tags kTags{"frmMain", "cmdStart_Click"};

// A failing statement never ends a scan: it is reported, and the next one runs.
template <class Statement>
void step(Statement&& statement) {
    attempt(reportAndGoOn(kTags), statement);
}

void showVersion(ScanPage& page) {
    page.window.StatusBar_.setPanelText(1, "Status");
    page.window.StatusBar_.setPanelText(2, "Version " + AppVersion);
}

// A request: the window's end is the end of the process, where nothing holds it up.
void closeWindow(ScanPage& page) {
    step([&] { page.window.unload(); });
}

void uncheckAndDisable(CheckBox& box) {
    step([&] { box.setValue(0); });
    box.setEnabled(false);
}

// --- one scan -----------------------------------------------------------------------------------

// The locals of one run of the handler. A scan that is started inside another one has its own.
class Scan {
  public:
    explicit Scan(ScanPage& page) : page_(page) {}
    void run();

  private:
    void prepare();
    [[nodiscard]] bool collect();
    [[nodiscard]] bool collectStep(int number, const ScanStep& row);
    void turnToChecks();
    [[nodiscard]] bool checkEntries();
    void showEntry();
    void report();
    void finish();
    void followUps();

    [[nodiscard]] int faults() const { return page_.lvwRegKeys.count(); }
    [[nodiscard]] std::int32_t upperBound() const { return static_cast<std::int32_t>(lines_.size()) - 1; }
    void panel(int number, std::string_view before, std::int64_t value, std::string_view behind);

    ScanPage& page_;
    SearchSpec spec_;
    ScanLines lines_;
    EntryParts parts_;
    std::int32_t total_ = 0;
    std::int32_t entry_ = 0;
    double percent_ = 0;
    std::string text_;  // of captions, kept for its memory
};

void Scan::run() {
    prepare();
    if (!collect()) return;
    turnToChecks();
    if (!checkEntries()) return;
    report();
    finish();
    followUps();
}

// The group that the last scan left behind is not touched: its object is judged in this one.
void Scan::prepare() {
    kTags.trace("started");
    ScanAbort = false;
    page_.cmdStart.setEnabled(false);
    page_.window.setMousePointer(MousePointer::Hourglass);
    page_.window.ProgressBar_.setRange(0, 100);
    page_.window.tmrTimer.setInterval(50);
    page_.window.tmrTimer.setEnabled(true);
    kTags.trace("Verlauf festgelegt");
    page_.chbRegKeysShow.setEnabled(false);
    Label* const labels[] = {&page_.lblScanTxt, &page_.lblScanProzent, &page_.lblScanBericht};
    for (Label* label : labels) label->setCaption("");
    for (Label* label : labels) label->setVisible(true);
    lines_.assign(1, std::string());
    page_.lvwRegKeys.clear();
}

bool Scan::collect() {
    int number = 0;
    for (const ScanStep& row : kScanSteps) {
        if (!collectStep(++number, row)) return false;
    }
    return true;
}

bool Scan::collectStep(int number, const ScanStep& row) {
    kTags.trace([&] { return "Schritt " + std::to_string(number) + " begonnen"; });
    spec_.SearchKey = row.searchKey;
    spec_.SearchHive = row.searchHive;
    page_.lblScanTxt.setCaption(row.caption);
    ScanAbort = false;
    page_.window.setMousePointer(MousePointer::Hourglass);
    page_.window.StatusBar_.setPanelText(1, "Schritt " + std::to_string(number) + " von " +
                                                std::to_string(kScanSteps.size()) +
                                                " läuft. Bitte warten...");
    step(DoEvents);
    kTags.trace("einlesen beginnt");
    step([&] { FindString(spec_, lines_); });
    page_.window.StatusBar_.setPanelText(1, "Einen Moment bitte...");
    page_.lblScanTxt.setCaption("Registrierungsschlüssel werden verarbeitet...");
    step(DoEvents);
    kTags.trace("einlesen beendet");
    page_.window.ProgressBar_.setValue(0);
    if (!ScanAbort) return true;
    kTags.trace("Scan abgebrochen");
    step([&] { page_.cmdAbbrechen_Click(); });
    return false;
}

void Scan::turnToChecks() {
    page_.window.tmrTimer.setEnabled(false);
    panel(2, "", upperBound(), " relevante Einträge");
    kTags.trace("alle Werte eingelesen");
    step(DoEvents);
    kTags.trace([&] { return std::to_string(upperBound()) + " zu prüfende Keys"; });
    total_ = upperBound();
    page_.window.StatusBar_.setPanelText(1, "Gefundene Einträge werden gescannt...");
    page_.window.ProgressBar_.setRange(0, total_);
    kTags.trace("Verlauf erneut festgelegt");
    kTags.trace("Key-Auswertung beginnt");
}

// The bound is taken once; an entry that closed a group is handed in a second time.
bool Scan::checkEntries() {
    for (entry_ = 1; entry_ <= total_; ++entry_) {
        parts_.take(lines_[static_cast<std::size_t>(entry_)], kTags);
        showEntry();
        CheckReg(parts_.hive, parts_.hiveName, parts_.key, parts_.name, parts_.value);
        CheckQuerVerbindung(parts_.hive, parts_.hiveName, parts_.key, parts_.name, parts_.value);
        if (ScanAbort) {
            kTags.trace("Der Scan wurde abgebrochen");
            step([&] { page_.cmdAbbrechen_Click(); });
            return false;
        }
        if (RepeatEntry) {
            --entry_;
            RepeatEntry = false;
        }
        step(DoEvents);
    }
    return true;
}

// Written anew for every entry; only the painting may be thinned out, and that is not done here.
void Scan::showEntry() {
    page_.lblScanTxt.setCaption("Registryschlüssel werden auf Fehler gescannt...");
    text_.clear();
    appendNumber(text_, donePercent(entry_, total_));
    page_.lblScanProzent.setCaption(text_ += "% fertig");
    panel(1, "Eintrag ", entry_, " wird gescannt...");
    panel(2, "Gefundene Fehler: ", faults(), "");
    page_.window.ProgressBar_.setValue(entry_);
}

void Scan::report() {
    kTags.trace("Key-Auswertung beendet");
    page_.window.ProgressBar_.setValue(0);
    page_.window.StatusBar_.setPanelText(1, "Status");
    panel(2, "Gefundene Fehler: ", faults(), "");
    page_.lblScanTxt.setCaption("Scanvorgang erfolgreich abgeschlossen.");
    kTags.trace([&] {
        return std::to_string(faults()) + " Fehler in " + std::to_string(upperBound()) + " Keys gefunden; ";
    });
    // No entries at all: reported as a failure, and the share stays 0.
    step([&] { percent_ = faultPercent(faults(), upperBound()); });
    if (const std::string_view rating = scanRating(percent_); !rating.empty())
        page_.lblScanBericht.setCaption(rating);
    page_.lblScanBericht.setCaption(page_.lblScanBericht.caption() + scanShare(faults(), total_, percent_));
    kTags.trace("Bericht ausgegeben");
}

void Scan::finish() {
    if (faults() > 0) {
        page_.cmdStart.setCaption("&Entfernen");
        page_.chbRegKeysShow.setEnabled(true);
    }
    ScanAbort = true;
    page_.cmdStart.setEnabled(true);
    page_.window.setMousePointer(MousePointer::Default);
    kTags.trace("endet");
}

// The close is asked for twice where the removal has asked for it already.
void Scan::followUps() {
    if (AutoEntfernen == 1 && faults() > 0) {
        kTags.trace([&] { return "AutoEntfernen wird gestartet" + std::to_string(entry_); });
        step([&] { page_.cmdStart_Click(); });  // the button's caption makes this the removal
    }
    if (AutoClose == 1) {
        kTags.trace("AutoClose");
        closeWindow(page_);
    }
}

void Scan::panel(int number, std::string_view before, std::int64_t value, std::string_view behind) {
    text_.assign(before);
    appendNumber(text_, value);
    page_.window.StatusBar_.setPanelText(number, text_ += behind);
}

// --- the removal of what a scan found --------------------------------------------------------------

void resetPage(ScanPage& page) {
    page.lvwRegKeys.setVisible(false);
    uncheckAndDisable(page.chbRegKeysShow);
    uncheckAndDisable(page.chbMarkierteKeysEntfernen);
    page.cmdStart.setCaption("&Start");
    page.lblScanProzent.setVisible(false);
    showVersion(page);
}

void removeFaults(ScanPage& page) {
    kTags.trace("Entfernen gedrückt");
    step([&] { page.ProblemeEntfernen(); });
    if (page.chbMarkierteKeysEntfernen.value() == 1) return;  // the offer stays, without restart or close
    resetPage(page);
    if (RebootAfterDelete == 1) {
        kTags.trace("AutoClose + Reboot");
        step(RebootSystem);
        closeWindow(page);
    }
    if (AutoClose == 1) {
        kTags.trace("AutoClose");
        closeWindow(page);
    }
}

}  // namespace

// One button, two roles, told apart by its caption alone.
void ScanPage::cmdStart_Click() {
    if (cmdStart.caption() == "&Entfernen") {
        removeFaults(*this);
    } else {
        Scan(*this).run();
    }
}

// Not restricted to a running scan: a click while the button reads "&Entfernen" discards that offer. Rows and
// group stay.
void ScanPage::cmdAbbrechen_Click() {
    ScanAbort = true;
    window.setMousePointer(MousePointer::Default);
    cmdStart.setEnabled(true);
    cmdStart.setCaption("Start");  // without the access key, unlike "&Start": a difference that stays
    cmdStart.setFocus();
    chbRegKeysShow.setValue(0);
    chbRegKeysShow.setEnabled(false);
    chbMarkierteKeysEntfernen.setValue(0);
    chbMarkierteKeysEntfernen.setEnabled(false);
    lvwRegKeys.setVisible(false);
    window.tmrTimer.setEnabled(false);
    window.ProgressBar_.setValue(0);
    lblScanBericht.setCaption("");
    lblScanProzent.setCaption("");
    lblScanTxt.setCaption("");
    showVersion(*this);
}

}  // namespace bromvale
