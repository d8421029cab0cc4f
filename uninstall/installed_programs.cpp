// The page of the installed programs: what the list shows, and how mouse and keyboard work on it.
#include <array>
#include <string>

#include "base/failure.h"
#include "base/numbers.h"
#include "core/attempt.h"
#include "core/log.h"
#include "core/registry_layer.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "scanner/scan_state.h"
#include "scanner/search.h"
#include "scanner/sort.h"
#include "ui/programs_page.h"
#include "uninstall/program_entry.h"

namespace bromvale {
namespace {

constexpr Tags kTags{"frmMain", "ShowDeinstall"};
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

    void take(std::string_view line) {
        const ProgramEntry entry = takeApart(line);
        if (entry.name == "DisplayName") {
            row_ = &list_.add({plainText(entry.data), "", std::to_string(toInt32(entry.hive)), entry.key},
                              kDeinstallIcon);
            key_ = entry.key;
            hive_ = entry.hive;
        } else if (entry.name == "UninstallString" && entry.key == key_ && entry.hive == hive_) {
            row_->setSubItem(kUninstallCommand, entry.data);
        }
    }

  private:
    ListView& list_;
    ListItem* row_ = nullptr;
    std::string key_;
    std::string hive_;  // a key of the same name in the other hive is another program's
};

// One run. The steps return false once a failure has ended it early.
class Listing {
  public:
    explicit Listing(ProgramsPage& page) : page_(page) {}
    void run() {
        static_cast<void>(step([&] { page_.lvwDeinstall.clear(); }) && collect(1) && collect(2) && sort() &&
                          fill());
    }

  private:
    // An invalid call costs the entries and nothing else: with none left the loops end by themselves.
    Ending handle(const Failure& failure) {
        const bool invalidCall = failure.number == kInvalidCall;
        ErrHandle(kTags.modul, kTags.funktion, "Programm Deinstallation konnte nicht angezeigt werden.",
                  failure.number, failure.description, kStyleExclamation, invalidCall ? kHide : kShow);
        if (!invalidCall) return Ending::Leave;
        entries_.assign(1, std::string());
        return Ending::Next;
    }
    template <class Statement>
    [[nodiscard]] bool step(Statement&& statement) {
        return attempt([this](const Failure& failure) { return handle(failure); }, statement);
    }
    [[nodiscard]] bool showStatus(std::string_view text) {
        return step([&] { page_.window.StatusBar_.setPanelText(kStatusPanel, text); }) && step(DoEvents);
    }

    [[nodiscard]] bool collect(int round) {
        SearchSpec spec;
        spec.SearchKey = kUninstallKey;
        spec.SearchHive = kRoots[static_cast<std::size_t>(round - 1)];
        if (!step([&] { page_.window.setMousePointer(MousePointer::Hourglass); }) ||
            !showStatus("Daten werden eingelesen..."))
            return false;
        kTags.trace([&] { return "Scanoptionen " + std::to_string(round) + " festgelegt"; });
        ScanAbort = false;
        if (!step([&] { FindString(spec, entries_); })) return false;
        kTags.trace([&] { return "Lesen von " + std::to_string(round) + " beendet"; });
        return showStatus("Einen Moment bitte...");
    }

    // By the whole text: HKEY_LOCAL_MACHINE, whose handle ends in 6, comes before HKEY_CURRENT_USER.
    [[nodiscard]] bool sort() {
        if (!step([&] { page_.window.ProgressBar_.setValue(0); }) || !step(DoEvents)) return false;
        kTags.trace([&] {
            return std::to_string(entries_.size() - 1) + " Einträge zu installierten Programmen gefunden";
        });
        if (!step([&] { Sortiere(entries_); })) return false;
        kTags.trace("Einträge sortiert");
        return true;
    }

    // Events were served meanwhile: should the user have asked for the list once more, it is filled already.
    [[nodiscard]] bool fill() {
        if (!step([&] { page_.lvwDeinstall.clear(); })) return false;
        ProgramRows rows(page_.lvwDeinstall);
        for (std::size_t i = 1; i < entries_.size(); ++i) {
            if (!step([&] { rows.take(entries_[i]); })) return false;
        }
        return true;
    }

    ProgramsPage& page_;
    ScanLines entries_{std::string()};
};

}  // namespace

void ProgramsPage::ShowDeinstall() {
    kTags.trace("started");
    Listing(*this).run();
    attempt(kGoOn, [&] { window.StatusBar_.setPanelText(kStatusPanel, "Status"); });
    attempt(kGoOn, [&] { window.setMousePointer(MousePointer::Default); });
    kTags.trace("endet");
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
