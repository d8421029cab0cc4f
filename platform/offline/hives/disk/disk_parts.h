// The parts of which findWindows is made; for the sources of disk.h alone.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/hives/disk/disk.h"
#include "platform/offline/hives/disk/open_hive.h"

namespace bromvale::offline {

// A Windows that is being looked at: where its paths lead.
struct DiskSearch {
    InsideFolder drive;                          // the system's
    std::map<char, InsideFolder> otherDrives{};  // by upper-case letter
    WindowsDisk disk{};

    // Of "C:\Users\Anna". Missing also where the drive isn't there.
    [[nodiscard]] InsidePath hostPath(std::u16string_view windowsPath) const;
    [[nodiscard]] const InsideFolder* driveOf(std::u16string_view windowsPath) const;
    // With the machine's variables (%SystemRoot% and so on) put in.
    [[nodiscard]] std::u16string expanded(std::u16string text) const;
    void warn(std::string sentence) { disk.warnings.push_back(std::move(sentence)); }
};

[[nodiscard]] char16_t upperLetter(char16_t letter);
[[nodiscard]] bool isWindowsPath(std::u16string_view path);  // begins with a drive
[[nodiscard]] std::u16string lastNameOf(std::u16string_view windowsPath);
void replaceVariable(std::u16string& text, std::u16string_view name, std::u16string_view value);
// For messages.
[[nodiscard]] std::string shown(std::u16string_view text);

// folders.cpp ---------------------------------------------------------------------------------------

// How many of the folder's names are this one without case: the one as written first.
[[nodiscard]] std::vector<std::string> namesLike(const std::string& folder, std::string_view name);
// The entry as a file, whatever it holds: its path behind links, and what is wrong where it can't be looked
// at.
[[nodiscard]] FoundHive fileAt(const InsideFolder& drive, const std::string& folder, const std::string& entry,
                               HiveRole role);
// The hive of that name, which has to hold this; with what is wrong where it can't be used. Of several names
// that differ by case alone the first that can be. Nothing where there is no such name.
[[nodiscard]] std::optional<FoundHive> hiveNamed(const InsideFolder& drive, const std::string& folder,
                                                 std::string_view name, HiveRole role, HiveContent content);
// The same where the name is another one: the only file of the folder that holds it.
[[nodiscard]] std::optional<FoundHive> hiveByContent(const InsideFolder& drive, const std::string& folder,
                                                     HiveRole role, HiveContent content);
// "is a folder", "leads out of the disk"; empty for a file that can be looked at.
[[nodiscard]] std::string whyNoFile(const InsidePath& path);
// The first bytes of a file, fewer where it is shorter; nothing where it can't be read.
[[nodiscard]] std::optional<std::string> startOf(const std::string& file, std::size_t size);

// The others, a source each -------------------------------------------------------------------------

// Folders of Windows in the root of a disk, or the folder itself where it is one.
[[nodiscard]] std::vector<std::string> windowsFolders(const std::string& folder);
[[nodiscard]] bool isNtFolder(const InsideFolder& drive, const std::string& folder);
[[nodiscard]] bool is9xFolder(const InsideFolder& drive, const std::string& folder);
// Why there is none.
[[nodiscard]] DiskProblem whyNoWindows(const std::string& path);

// Fills the search's disk; a problem where the machine's hives don't let it.
[[nodiscard]] std::optional<DiskProblem> describeNt(DiskSearch& search);
[[nodiscard]] std::optional<DiskProblem> describe9x(DiskSearch& search);
// Root of the drive and letter from where Windows says that it is ("C:\WINDOWS"), `disk.folder` being known.
void placeOnDrive(DiskSearch& search, std::u16string_view systemRoot);

[[nodiscard]] std::vector<DriveLetter> driveLetters(const Hive& system);
void findUsers(DiskSearch& search, const Hive& software);
void findHibernation(DiskSearch& search);

}  // namespace bromvale::offline
