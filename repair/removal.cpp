// Turns the rows of the result list into deletions. Before a key goes, its row is saved in the undo file and
// all of the key in the complete copy beside it.
#include <optional>
#include <string>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/attempt.h"
#include "core/log.h"
#include "core/registry_layer.h"
#include "core/state.h"
#include "core/text_file.h"
#include "repair/complete_copy.h"
#include "repair/undo_file.h"
#include "ui/scan_page.h"

namespace bromvale {

namespace {

constexpr Tags kTags{"frmMain", "ProblemeEntfernen"};

// A failure that ends the removal leaves the undo file as far as it was written, and open.
Ending handle(const Failure& failure) {
    return onBackupFailure(kTags, failure);
}

// One run. The steps return false once the removal has ended early.
class Removal {
  public:
    explicit Removal(ScanPage& page) : page_(page), list_(page.lvwRegKeys) {}
    void run();

  private:
    [[nodiscard]] bool openUndoFile();
    [[nodiscard]] bool writeHeader();
    [[nodiscard]] bool removeSelected();
    [[nodiscard]] bool removeAll();
    [[nodiscard]] bool saveAndDelete(int row);
    [[nodiscard]] bool copyAndDelete(const std::string& hiveHandle, const std::string& subKey);
    [[nodiscard]] bool show(std::string_view message);

    template <class Statement>
    [[nodiscard]] static bool step(Statement&& statement) {
        return attempt(handle, statement);
    }

    ScanPage& page_;
    ListView& list_;
    int file_ = 0;
    std::optional<CompleteCopy> copy_;
};

void Removal::run() {
    kTags.trace("started");
    const auto removeRows = [&] {
        return page_.chbMarkierteKeysEntfernen.value() == 1 ? removeSelected() : removeAll();
    };
    if (openUndoFile() && writeHeader() && removeRows()) static_cast<void>(step([&] { closeFile(file_); }));
    kTags.trace("endet");
}

bool Removal::openUndoFile() {
    std::string stamp;
    if (!step([&] { file_ = freeFile(); }) || !step([&] { stamp = undoStamp(); })) return false;
    copy_.emplace(stamp);
    kTags.trace([&] { return "Sicherungsdatei: " + undoFileName(stamp); });
    // Once, before any row is read: rows are taken in the order that the list shows.
    return step([&] { list_.setSortKey(kKeyLine); }) &&
           step([&] { list_.setSortOrder(SortOrder::Descending); }) &&
           step([&] { openFile(BackupPath + undoFileName(stamp), FileMode::Append, file_); });
}

// Date and time are read anew and can differ from the file's name by a moment.
bool Removal::writeHeader() {
    std::string created;
    if (!step([&] { created = undoCreated(); })) return false;
    for (const std::string& line :
         undoHeaderLines({RegFileHeader, AppTitle, AppVersion, created, UserName, ComputerName, OSName})) {
        if (!step([&] { writeLine(file_, line); })) return false;
    }
    return true;
}

// The row that moves up into the place of a removed one is looked at next.
bool Removal::removeSelected() {
    kTags.trace("Einzelne Fehler entfernen wurde aktiviert.");
    for (int row = 1; row <= list_.count(); ++row) {
        bool selected = false;
        if (!step([&] { selected = list_.item(row).selected(); })) return false;
        if (!selected) continue;
        if (!saveAndDelete(row) || !step([&] { list_.remove(row); })) return false;
        --row;
    }
    return show("Die markierten Fehler wurden erfolgreich entfernt und gesichert.");
}

// Rows stay until the end: should the removal end early, the list still holds those that are gone already.
bool Removal::removeAll() {
    kTags.trace("Alle Fehler entfernen wurde aktiviert.");
    for (int row = 1; row <= list_.count(); ++row) {
        if (!saveAndDelete(row)) return false;
    }
    return show("Die erkannten Fehler wurden erfolgreich entfernt und gesichert.") &&
           step([&] { list_.clear(); });
}

// The record is with the operating system, in one write, before its key is deleted.
// The sub key is what stands behind the first backslash without the closing "]": rows of a dead link have
// none behind the hive's name and lose the first element of their path, so that their deletion aims at a key
// below `Classes` of the hive, which as a rule isn't there. They are handled like all others on purpose:
// where it is there, it goes, and the complete copy has it.
bool Removal::saveAndDelete(int row) {
    const ListItem& item = list_.item(row);
    const std::string& keyLine = item.column(kKeyLine);
    const std::string& name = item.column(kValueName);
    const std::string& data = item.column(kValueData);
    if (!step([&] { writeFile(file_, undoRecord(keyLine, name, data)); })) return false;

    const auto length = static_cast<std::int64_t>(keyLine.size());
    const std::int32_t slash = InStr(keyLine, "\\");
    std::string hiveName;  // not used any further: the root comes from the row's handle
    std::string subKey;
    if (!step([&] { hiveName = Mid(keyLine, 2, slash - 2); }) ||
        !step([&] { subKey = Mid(keyLine, slash + 1, length - slash - 1); }))
        return false;
    // This one line carries the module of the checks, unlike the rest of the routine.
    trace("modCheckKeys", kTags.funktion, [&] { return undoRecordText(keyLine, name, data); });
    return copyAndDelete(item.column(kHiveHandle), subKey);
}

// Whole and with the operating system, in one write, before the key is deleted. A key that can't be copied
// whole stays, and its row counts as removed like that of any key that refuses.
bool Removal::copyAndDelete(const std::string& hiveHandle, const std::string& subKey) {
    std::int32_t hive = 0;
    KeyCopy copy = KeyCopy::NoKey;
    if (!step([&] { hive = toInt32(hiveHandle); }) || !step([&] { copy = copy_->save(hive, subKey); }))
        return false;
    return step([&] { deleteCopied(copy, kTags, hive, subKey, kHide); });
}

bool Removal::show(std::string_view message) {
    return step([&] { page_.lblScanBericht.setCaption(message); });
}

}  // namespace

void ScanPage::ProblemeEntfernen() {
    Removal(*this).run();
}

}  // namespace bromvale
