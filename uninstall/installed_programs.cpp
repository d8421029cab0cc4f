// The page of the installed programs: what the list shows, and how mouse and keyboard work on it.
#include <array>
#include <string>

#include "core/registry_layer.h"
#include "core/routine.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "scanner/search.h"
#include "scanner/sort.h"
#include "ui/programs_page.h"

namespace bromvale {
namespace {

constexpr std::string_view kUninstallKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
constexpr std::array kRoots{kHiveCurrentUser, kHiveLocalMachine};
constexpr int kStatusPanel = 1;
constexpr int kDeinstallIcon = 5;
constexpr int kInvalidCall = 5;

// Turns the sorted entries into rows: a program per "DisplayName", its command from the "UninstallString" of
// the same key, which sorts behind it. The name is there to be read; command and key are the true texts.
class ProgramRows {
  public:
    explicit ProgramRows(ListView& list) : list_(list) {}

    void take(const Entry& entry) {
        if (entry.name == "DisplayName") {
            row_ = &list_.add({plainText(entry.value), "", std::to_string(entry.hive), entry.key},
                              kDeinstallIcon);
            key_ = entry.key;
            hive_ = entry.hive;
        } else if (entry.name == "UninstallString" && entry.key == key_ && entry.hive == hive_) {
            row_->setSubItem(kUninstallCommand, entry.value);
        }
    }

  private:
    ListView& list_;
    ListItem* row_ = nullptr;
    std::string key_;
    std::int32_t hive_ = 0;  // a key of the same name in the other hive is another program's
};

// An invalid call costs the entries and nothing else: with none left the loops end by themselves.
struct LoseEntries {
    ScanLines& entries;

    Ending operator()(const Tags& tags, const Failure& failure) const {
        const bool invalidCall = failure.number == kInvalidCall;
        if (invalidCall) entries.assign(1, std::string());
        return Report{invalidCall ? Ending::Next : Ending::Leave, kStyleExclamation,
                      invalidCall ? kHide : kShow,
                      "Programm Deinstallation konnte nicht angezeigt werden."}(tags, failure);
    }
};

// One run. The parts return false once a failure has ended it early.
class Listing {
  public:
    explicit Listing(ProgramsPage& page) : window_(page.window), list_(page.lvwDeinstall) {}
    void run() {
        routine_.started();
        if (clear() && collect(1) && collect(2) && sort()) fill();
        quietly([&] { window_.StatusBar_.setPanelText(kStatusPanel, "Status"); });
        window_.setMousePointer(MousePointer::Default);
        routine_.ended();
    }

  private:
    [[nodiscard]] bool clear() {
        return routine_.step([&] { list_.clear(); });
    }
    [[nodiscard]] bool showStatus(std::string_view text) {
        return routine_.step([&] { window_.StatusBar_.setPanelText(kStatusPanel, text); }) &&
               routine_.step(DoEvents);
    }

    [[nodiscard]] bool collect(int round) {
        SearchSpec spec;
        spec.SearchKey = kUninstallKey;
        spec.SearchHive = kRoots[static_cast<std::size_t>(round - 1)];
        window_.setMousePointer(MousePointer::Hourglass);
        if (!showStatus("Daten werden eingelesen...")) return false;
        routine_.trace([&] { return "Scanoptionen " + std::to_string(round) + " festgelegt"; });
        ScanAbort = false;
        if (!routine_.step([&] { FindString(spec, entries_); })) return false;
        routine_.trace([&] { return "Lesen von " + std::to_string(round) + " beendet"; });
        return showStatus("Einen Moment bitte...");
    }

    // By the whole text: HKEY_LOCAL_MACHINE, whose handle ends in 6, comes before HKEY_CURRENT_USER.
    [[nodiscard]] bool sort() {
        if (!routine_.step([&] { window_.ProgressBar_.setValue(0); }) || !routine_.step(DoEvents))
            return false;
        routine_.trace([&] {
            return std::to_string(entries_.size() - 1) + " Einträge zu installierten Programmen gefunden";
        });
        if (!routine_.step([&] { Sortiere(entries_); })) return false;
        routine_.trace("Einträge sortiert");
        return true;
    }

    // Events were served meanwhile: should the user have asked for the list once more, it is filled already.
    void fill() {
        if (!clear()) return;
        ProgramRows rows(list_);
        for (std::size_t i = 1; i < entries_.size(); ++i) {
            if (!routine_.step([&] { rows.take(ScanLine(entries_[i]).entry()); })) return;
        }
    }

    MainWindow& window_;
    ListView& list_;
    ScanLines entries_{std::string()};
    const Routine<LoseEntries> routine_{{"frmMain", "ShowDeinstall"}, {entries_}};
};

}  // namespace

void ProgramsPage::ShowDeinstall() {
    Listing(*this).run();
}

void ProgramsPage::mnuPopUpDeinstall_Click() {
    show();
    ShowDeinstall();
    window.setMousePointer(MousePointer::Default);
}

void ProgramsPage::cmdDeinstallRefresh_Click() {
    ShowDeinstall();
}

}  // namespace bromvale
