// Why a hive is not written, or a cleaning not undone: what is wrong, why that matters and what helps.
#pragma once

#include <string>
#include <string_view>

namespace bromvale::offline {

enum class RefusalKind {
    BadStamp,
    StampUsed,
    Hibernated,
    HibernationDoubtful,
    MandatoryProfile,
    NoSecondReader,
    SameHiveTwice,
    Unreadable,
    NotAFile,
    HardLinked,
    ForeignOwner,
    ReadOnly,
    NotWritable,
    NoSpace,
    LogElsewhere,
    LogNotGiven,
    ChangedSinceShown,
    DirtyWithoutLogs,
    Damaged,
    KeyStays,
    Transactions,
    Busy,
    Unfinished,
    ListUnreadable,
    UnknownStamp,
    AlreadyUndone,
    ChangedSinceCleaning,
    CopyDamaged
};

struct Refusal {
    RefusalKind kind{};
    std::string path;  // of the host, or empty where it is about all
    std::string what;  // three English sentences
    std::string why;
    std::string help;
};

// `what` is a sentence without full stop.
[[nodiscard]] Refusal refusal(RefusalKind kind, const std::string& path, std::string_view what);

}  // namespace bromvale::offline
