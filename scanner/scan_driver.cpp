// A scan: nine places are collected, then each entry is checked. A failing statement never ends it: it is
// reported, and the next one runs.
#include "scanner/scan_driver.h"

#include <cstdint>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "core/settings.h"
#include "platform/events.h"
#include "scanner/registry_checks.h"
#include "scanner/scan_report.h"
#include "scanner/scan_steps.h"
#include "scanner/search.h"

namespace bromvale {
namespace {

// The locals of one run of the handler. A scan that is started inside another one has its own.
class Scan {
  public:
    explicit Scan(ScanPage& page) : page_(page), window_(page.window) {}
    void run();

  private:
    void prepare();
    [[nodiscard]] bool collect();
    [[nodiscard]] bool collectStep(int number, const ScanStep& row);
    [[nodiscard]] bool endedByAbort(std::string_view text);
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
    MainWindow& window_;
    EntryGroup& group_ = entryGroup();
    SearchSpec spec_;
    ScanLines lines_;
    LineParts parts_;
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
    kStartButton.started();
    ScanAbort = false;
    page_.cmdStart.setEnabled(false);
    window_.setMousePointer(MousePointer::Hourglass);
    window_.ProgressBar_.setRange(0, 100);
    window_.tmrTimer.setInterval(50);
    window_.tmrTimer.setEnabled(true);
    kStartButton.trace("Verlauf festgelegt");
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
    kStartButton.trace([&] { return "Schritt " + std::to_string(number) + " begonnen"; });
    spec_.SearchKey = row.searchKey;
    spec_.SearchHive = row.searchHive;
    page_.lblScanTxt.setCaption(row.caption);
    ScanAbort = false;
    window_.setMousePointer(MousePointer::Hourglass);
    window_.StatusBar_.setPanelText(1, "Schritt " + std::to_string(number) + " von " +
                                           std::to_string(kScanSteps.size()) + " läuft. Bitte warten...");
    kStartButton.step(DoEvents);
    kStartButton.trace("einlesen beginnt");
    kStartButton.step([&] { FindString(spec_, lines_); });
    window_.StatusBar_.setPanelText(1, "Einen Moment bitte...");
    page_.lblScanTxt.setCaption("Registrierungsschlüssel werden verarbeitet...");
    kStartButton.step(DoEvents);
    kStartButton.trace("einlesen beendet");
    window_.ProgressBar_.setValue(0);
    return !endedByAbort("Scan abgebrochen");
}

bool Scan::endedByAbort(std::string_view text) {
    if (!ScanAbort) return false;
    kStartButton.trace(text);
    kStartButton.step([&] { page_.cmdAbbrechen_Click(); });
    return true;
}

void Scan::turnToChecks() {
    window_.tmrTimer.setEnabled(false);
    panel(2, "", upperBound(), " relevante Einträge");
    kStartButton.trace("alle Werte eingelesen");
    kStartButton.step(DoEvents);
    kStartButton.trace([&] { return std::to_string(upperBound()) + " zu prüfende Keys"; });
    total_ = upperBound();
    window_.StatusBar_.setPanelText(1, "Gefundene Einträge werden gescannt...");
    window_.ProgressBar_.setRange(0, total_);
    kStartButton.trace("Verlauf erneut festgelegt");
    kStartButton.trace("Key-Auswertung beginnt");
}

// The bound is taken once; an entry that closed a group is handed in a second time.
bool Scan::checkEntries() {
    for (entry_ = 1; entry_ <= total_; ++entry_) {
        ScanLine(lines_[static_cast<std::size_t>(entry_)]).takeInto(parts_, kStartButton);
        showEntry();
        CheckReg(parts_, group_, page_);
        CheckQuerVerbindung(parts_, group_, page_);
        if (endedByAbort("Der Scan wurde abgebrochen")) return false;
        if (std::exchange(group_.repeat, false)) --entry_;
        kStartButton.step(DoEventsOften);
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
    window_.ProgressBar_.setValue(entry_);
}

void Scan::report() {
    kStartButton.trace("Key-Auswertung beendet");
    window_.ProgressBar_.setValue(0);
    window_.StatusBar_.setPanelText(1, "Status");
    panel(2, "Gefundene Fehler: ", faults(), "");
    page_.lblScanTxt.setCaption("Scanvorgang erfolgreich abgeschlossen.");
    kStartButton.trace([&] {
        return std::to_string(faults()) + " Fehler in " + std::to_string(upperBound()) + " Keys gefunden; ";
    });
    // No entries at all: reported as a failure, and the share stays 0.
    kStartButton.step([&] { percent_ = faultPercent(faults(), upperBound()); });
    if (const std::string_view rating = scanRating(percent_); !rating.empty())
        page_.lblScanBericht.setCaption(rating);
    page_.lblScanBericht.setCaption(page_.lblScanBericht.caption() + scanShare(faults(), total_, percent_));
    kStartButton.trace("Bericht ausgegeben");
}

void Scan::finish() {
    if (faults() > 0) {
        page_.cmdStart.setCaption("&Entfernen");
        page_.chbRegKeysShow.setEnabled(true);
    }
    ScanAbort = true;
    page_.cmdStart.setEnabled(true);
    window_.setMousePointer(MousePointer::Default);
    kStartButton.ended();
}

// The close is asked for twice where the removal has asked for it already.
void Scan::followUps() {
    if (AutoEntfernen == 1 && faults() > 0) {
        kStartButton.trace([&] { return "AutoEntfernen wird gestartet" + std::to_string(entry_); });
        kStartButton.step(
            [&] { pressStart(page_, WishedBy::Setting); });  // the button's caption makes this the removal
    }
    closeIfWished(page_);
}

void Scan::panel(int number, std::string_view before, std::int64_t value, std::string_view behind) {
    text_.assign(before);
    appendNumber(text_, value);
    window_.StatusBar_.setPanelText(number, text_ += behind);
}

}  // namespace

void runScan(ScanPage& page) {
    Scan(page).run();
}

void closeWindow(ScanPage& page) {
    kStartButton.step([&] { page.window.unload(); });
}

void closeIfWished(ScanPage& page) {
    if (AutoClose != 1) return;
    kStartButton.trace("AutoClose");
    closeWindow(page);
}

}  // namespace bromvale
