// Turns the rows of the result list into deletions. Before a key goes, its row is saved in the undo file and
// all of the key in the complete copy beside it.
#include <optional>
#include <string>

#include "base/failure.h"
#include "base/text.h"
#include "core/routine.h"
#include "core/state.h"
#include "core/text_file.h"
#include "repair/complete_copy.h"
#include "repair/undo_file.h"
#include "ui/scan_page.h"

namespace bromvale {

namespace {

// A failure that ends the removal leaves the undo file as far as it was written, and open.
constexpr Routine kRoutine{{"frmMain", "ProblemeEntfernen"}, &onBackupFailure};

// One run. The parts return false once the removal has ended early.
class Removal {
  public:
    explicit Removal(ScanPage& page) : page_(page), list_(page.lvwRegKeys) {}
    void run();

  private:
    [[nodiscard]] bool openUndoFile();
    [[nodiscard]] bool writeHeader();
    [[nodiscard]] bool removeSelected();
    [[nodiscard]] bool removeAll();
    [[nodiscard]] bool saveAndDelete(int number);
    [[nodiscard]] bool show(std::string_view message);

    ScanPage& page_;
    ListView& list_;
    int file_ = 0;
    std::optional<CompleteCopy> copy_;
};

void Removal::run() {
    kRoutine.started();
    const auto removeRows = [&] {
        return page_.chbMarkierteKeysEntfernen.value() == 1 ? removeSelected() : removeAll();
    };
    if (openUndoFile() && writeHeader() && removeRows()) kRoutine.step([&] { closeFile(file_); });
    kRoutine.ended();
}

bool Removal::openUndoFile() {
    std::string stamp;
    if (!kRoutine.step([&] { file_ = freeFile(); }) || !kRoutine.step([&] { stamp = undoStamp(); }))
        return false;
    copy_.emplace(stamp);
    kRoutine.trace([&] { return "Sicherungsdatei: " + undoFileName(stamp); });
    // Once, before any row is read: rows are taken in the order that the list shows.
    return kRoutine.step([&] { list_.setSortKey(kKeyLine); }) &&
           kRoutine.step([&] { list_.setSortOrder(SortOrder::Descending); }) &&
           kRoutine.step([&] { openFile(BackupPath + undoFileName(stamp), FileMode::Append, file_); });
}

// Date and time are read anew and can differ from the file's name by a moment.
bool Removal::writeHeader() {
    std::string created;
    if (!kRoutine.step([&] { created = undoCreated(); })) return false;
    for (const std::string& line :
         undoHeaderLines({RegFileHeader, AppTitle, AppVersion, created, UserName, ComputerName, OSName})) {
        if (!kRoutine.step([&] { writeLine(file_, line); })) return false;
    }
    return true;
}

// The row that moves up into the place of a removed one is looked at next.
bool Removal::removeSelected() {
    kRoutine.trace("Einzelne Fehler entfernen wurde aktiviert.");
    for (int row = 1; row <= list_.count(); ++row) {
        bool selected = false;
        if (!kRoutine.step([&] { selected = list_.item(row).selected(); })) return false;
        if (!selected) continue;
        if (!saveAndDelete(row) || !kRoutine.step([&] { list_.remove(row); })) return false;
        --row;
    }
    return show("Die markierten Fehler wurden erfolgreich entfernt und gesichert.");
}

// Rows stay until the end: should the removal end early, the list still holds those that are gone already.
bool Removal::removeAll() {
    kRoutine.trace("Alle Fehler entfernen wurde aktiviert.");
    for (int row = 1; row <= list_.count(); ++row) {
        if (!saveAndDelete(row)) return false;
    }
    return show("Die erkannten Fehler wurden erfolgreich entfernt und gesichert.") &&
           kRoutine.step([&] { list_.clear(); });
}

// The record and then the whole key are with the operating system, in one write each, before the key is
// deleted. A key that can't be copied whole stays, and its row counts as removed like that of any key that
// refuses.
//
// The sub key is what stands behind the first backslash without the closing "]": rows of a dead link have
// none behind the hive's name and lose the first element of their path, so that their deletion aims at a key
// below `Classes` of the hive, which as a rule isn't there. They are handled like all others on purpose:
// where it is there, it goes, and the complete copy has it.
bool Removal::saveAndDelete(int number) {
    ResultRow row;
    if (!kRoutine.step([&] { row = page_.rowAt(number); }) ||
        !kRoutine.step([&] { writeFile(file_, undoRecord(row.keyLine, row.valueName, row.valueData)); }))
        return false;
    const auto length = static_cast<std::int64_t>(row.keyLine.size());
    const std::int32_t slash = InStr(row.keyLine, "\\");
    std::string hiveName;  // the root comes from the row's handle; without a backslash this is a failure
    std::string subKey;
    if (!kRoutine.step([&] { hiveName = Mid(row.keyLine, 2, slash - 2); }) ||
        !kRoutine.step([&] { subKey = Mid(row.keyLine, slash + 1, length - slash - 1); }))
        return false;
    // This one line carries the module of the checks, unlike the rest of the routine.
    trace("modCheckKeys", kRoutine.funktion,
          [&] { return undoRecordText(row.keyLine, row.valueName, row.valueData); });
    std::optional<KeyCopy> copy;
    return kRoutine.step([&] { copy = copy_->save(row.hive, subKey); }) && copy &&
           kRoutine.step([&] { deleteCopied(*copy, kRoutine, row.hive, subKey, kHide); });
}

bool Removal::show(std::string_view message) {
    return kRoutine.step([&] { page_.lblScanBericht.setCaption(message); });
}

}  // namespace

void ScanPage::ProblemeEntfernen() {
    Removal(*this).run();
}

}  // namespace bromvale
