#include "repair/complete_copy.h"

#include <optional>

#include "base/c_text.h"
#include "base/failure.h"
#include "core/registry_layer.h"
#include "core/state.h"
#include "core/text_file.h"
#include "platform/exact/registry.h"
#include "platform/exact/text.h"
#include "repair/key_record.h"
#include "repair/undo_file.h"

namespace bromvale {
namespace {

constexpr REGSAM kReadWhole = KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS;
constexpr Report kShowAndLeave{Ending::Leave, kStyleExclamation, kShow};

bool meansNoKey(LONG status) {
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND || status == ERROR_BAD_PATHNAME ||
           status == ERROR_KEY_DELETED;
}

class OpenedKey {
  public:
    OpenedKey(std::int32_t hive, std::string_view subKey)
        : status_(openExactKey(hiveHandle(hive), CText(subKey).get(), kReadWhole, key_)) {}
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;
    ~OpenedKey() {
        if (status_ == ERROR_SUCCESS) static_cast<void>(RegCloseKey(key_));
    }
    [[nodiscard]] LONG status() const { return status_; }
    [[nodiscard]] HKEY get() const { return key_; }

  private:
    HKEY key_ = nullptr;
    LONG status_;
};

// The hives themselves never go.
bool namesHive(std::string_view subKey) {
    return subKey.find_first_not_of('\\') == std::string_view::npos;
}

// A file that isn't there, is empty, or was begun in the form of the record made last and not cut within a
// character.
bool takesRecords(const std::string& path) {
    const std::string header = keyFileHeader();
    const auto start = fileStart(path, header.size());
    if (!start || start->size == 0) return true;
    const std::size_t unit = header.starts_with("\xFF\xFE") ? 2 : 1;
    return start->bytes == header && start->size % unit == 0;
}

std::string_view reasonOf(KeyCopy copy) {
    return copy == KeyCopy::Unreadable
               ? "Der Schlüssel kann nicht vollständig gelesen und daher nicht gesichert werden."
               : "Die Sicherungsdatei kann den Schlüssel nicht vollständig aufnehmen.";
}

}  // namespace

CompleteCopy::CompleteCopy(std::string_view stamp) : stamp_(stamp) {}

CompleteCopy::~CompleteCopy() {
    closeFile(file_);
}

KeyCopy CompleteCopy::save(std::int32_t hive, std::string_view subKey) {
    if (namesHive(subKey)) return KeyCopy::NoForm;
    const OpenedKey key(hive, subKey);
    if (meansNoKey(key.status())) return KeyCopy::NoKey;
    if (key.status() != ERROR_SUCCESS) return KeyCopy::Unreadable;
    switch (keyRecord(key.get(), hive, subKey, record_)) {
        case KeyRecord::Unreadable: return KeyCopy::Unreadable;
        case KeyRecord::NoForm: return KeyCopy::NoForm;
        case KeyRecord::Whole: break;
    }
    write(record_);
    return KeyCopy::Whole;
}

// Two removals within one second share a file: the second one adds its records. A file of another form that
// has the name already, as one that another system wrote while its clock stood there, would spoil them: then
// the next free name is taken.
void CompleteCopy::write(std::string_view record) {
    if (file_ == 0) {
        std::string path = BackupPath + completeCopyName(stamp_);
        for (int i = 2; !takesRecords(path); ++i)
            path = BackupPath + completeCopyName(stamp_ + "_" + std::to_string(i));
        const int file = freeFile();
        openFile(path, FileMode::Append, file);
        file_ = file;
    }
    if (isEmptyFile(file_)) {
        writeWholeOrNothing(file_, keyFileHeader().append(record));
    } else {
        writeWholeOrNothing(file_, record);
    }
}

void deleteCopied(KeyCopy copy, const Tags& tags, std::int32_t hive, std::string_view subKey,
                  std::int16_t show) {
    if (copy == KeyCopy::Whole) return DelKey(hive, subKey, READ_CONTROL);
    if (copy == KeyCopy::NoKey) return DelMissingKey(hive, subKey);
    const std::string text = std::string("Der Schlüssel [")
                                 .append(HiveName(hive))
                                 .append("\\")
                                 .append(plainText(subKey))
                                 .append("] wurde nicht entfernt.");
    ErrHandle(tags.modul, tags.funktion, text, 0, reasonOf(copy), kStyleExclamation, show);
}

Ending onBackupFailure(const Tags& tags, const Failure& failure) {
    if (failure.number == Failure::kNoAccess || failure.number == Failure::kPathNotFound) {
        makeFolder(BackupPath);
        const std::string text = "Ordner " + BackupPath + " angelegt";
        return Report{Ending::Retry, kStyleExclamation, kHide, text}(tags, failure);
    }
    return kShowAndLeave(tags, failure);
}

void copyAndDelete(const Tags& tags, std::int32_t hive, std::string_view subKey) {
    const Routine saving{tags, &onBackupFailure};
    // A folder that can't be made either is shown as well.
    const Routine shown{tags, kShowAndLeave};
    std::optional<KeyCopy> copy;
    shown.step([&] { saving.step([&] { copy = CompleteCopy(undoStamp()).save(hive, subKey); }); });
    if (copy) deleteCopied(*copy, tags, hive, subKey, kShow);
}

}  // namespace bromvale
