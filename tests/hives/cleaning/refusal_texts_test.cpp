// What a user reads about each refusal, word for word: why, and what to do.
#include <gtest/gtest.h>

#include "platform/offline/hives/cleaning/refusals.h"

namespace bromvale::offline {
namespace {

struct Told {
    RefusalKind kind;
    const char* why;
    const char* help;
};

constexpr Told kTold[] = {
    {RefusalKind::BadStamp, "The stamp becomes part of the names of the copies.",
     "Give letters, digits, \"-\" and \"_\" alone."},
    {RefusalKind::StampUsed, "The copies of that cleaning would be written over.",
     "Start again; the next second has another stamp."},
    {RefusalKind::Hibernated,
     "Windows keeps the registry in memory over a hibernation and a fast start, and writes it over whatever "
     "is changed here; the file system can break as well.",
     "Start Windows and shut it down fully with \"shutdown /s /t 0\" (\"powercfg /h off\" turns fast start "
     "off). Never throw the saved session away."},
    {RefusalKind::HibernationDoubtful,
     "If Windows sleeps, it writes its own registry over whatever is changed here.",
     "Say so if you know that Windows was shut down fully; else start it and shut it down with \"shutdown /s "
     "/t 0\"."},
    {RefusalKind::MandatoryProfile, "A mandatory profile is the administrator's and the same for many users.",
     "Clean the user's own NTUSER.DAT, or have the administrator change the profile."},
    {RefusalKind::NoSecondReader,
     "Nothing is written that a second, independent reader has not looked through.",
     "Install libhivex-dev and build the program anew."},
    {RefusalKind::SameHiveTwice, "The second cleaning would begin with what the first has made of the hive.",
     "Name each hive once, with all its keys."},
    {RefusalKind::Unreadable, "What can't be read whole can't be copied or cleaned.",
     "Look at the disk and the rights of the file, and start again."},
    {RefusalKind::NotAFile,
     "A new hive would take the link's or device's place and leave the true file as it is.",
     "Name the file itself."},
    {RefusalKind::HardLinked, "Only one of the file's names would show the new content.",
     "Remove the other names, or copy the file to a name of its own."},
    {RefusalKind::ForeignOwner,
     "The new file could not be given its owner back, and Windows may not open it.",
     "Run the program as the owner, or as root."},
    {RefusalKind::ReadOnly,
     "Nothing can be written there. ntfs-3g mounts a disk so when Windows sleeps or was not shut down.",
     "Start Windows and shut it down fully with \"shutdown /s /t 0\"; or mount the disk for writing."},
    {RefusalKind::NotWritable, "Copies and the new hive are made beside the hive.",
     "Run the program as a user who may write there."},
    {RefusalKind::NoSpace, "The copies, the replayed hive and the new one need it at the same time.",
     "Make room on that disk."},
    {RefusalKind::LogElsewhere, "Windows looks for the logs of a hive beside it, and so does the undo.",
     "Put hive and logs into one folder."},
    {RefusalKind::LogNotGiven, "A log that is left behind may be taken for one of the new hive.",
     "Give all logs of the hive."},
    {RefusalKind::ChangedSinceShown, "The keys were chosen in another state of the hive.",
     "Look at the hive again and choose anew; nobody else may write to the disk meanwhile."},
    {RefusalKind::DirtyWithoutLogs,
     "The hive lacks changes that Windows had decided to make; whoever declares it clean loses them and may "
     "break it.",
     "Find the logs that belong to it, or let Windows start once and shut it down."},
    {RefusalKind::Damaged, "In a damaged hive a deletion can destroy what does not belong to it.",
     "Restore the hive from a copy; it can still be read and exported."},
    {RefusalKind::KeyStays, "Windows relies on such keys.", "Leave the key out of the choice."},
    {RefusalKind::Transactions,
     "Changes that Windows has begun and not ended wait in files beside the hive and refer to what is in it.",
     "Start Windows and shut it down fully; or say that these may be lost."},
    {RefusalKind::Busy, "Two at once would each undo the other's work.", "Wait until the other one is done."},
    {RefusalKind::Unfinished, "Half of it is done, and a second one would begin in the middle.",
     "Let it be finished or taken back first."},
    {RefusalKind::ListUnreadable, "Without the list nobody knows what was done and what the copies are.",
     "Look at the files of that name; the copies in them are whole files."},
    {RefusalKind::UnknownStamp, "There is nothing to put back.", "Have the cleanings listed."},
    {RefusalKind::AlreadyUndone, "The old state was put back already.", "There is nothing left to do."},
    {RefusalKind::ChangedSinceCleaning,
     "What Windows or another program has written since would be lost with it, programs installed since "
     "among it.",
     "Use the .reg file of the complete copy to bring single keys back; or force it if the old state is "
     "worth more."},
    {RefusalKind::CopyDamaged, "The old state would not come back byte for byte.",
     "Look for another copy; the .reg file of the complete copy holds the keys."},
};

TEST(RefusalTexts, TellWhyAndWhatToDo) {
    int number = 0;
    for (const Told& told : kTold) {
        EXPECT_EQ(static_cast<int>(told.kind), number++) << "each kind has its texts";
        const Refusal refused = refusal(told.kind, "/platte/SOFTWARE", "Es geht nicht");
        EXPECT_EQ(refused.kind, told.kind);
        EXPECT_EQ(refused.path, "/platte/SOFTWARE");
        EXPECT_EQ(refused.what, "Es geht nicht.");
        EXPECT_EQ(refused.why, told.why);
        EXPECT_EQ(refused.help, told.help);
    }
    EXPECT_EQ(static_cast<int>(RefusalKind::CopyDamaged) + 1, number);
}

}  // namespace
}  // namespace bromvale::offline
