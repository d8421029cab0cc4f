#pragma once
// The offline machine: it owns all that the platform's functions touch. One for the process; tests set it up
// before the program runs and look at it afterwards.
//
// Results given to the fault points (faults.h): for functions that answer by GetLastError the number is the
// last error and the call fails; for RegXxx functions it is the result; for ShellExecuteA, SHFileOperationA
// and MessageBoxA it is what they return.
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/offline/desktop/events.h"
#include "platform/offline/desktop/pump.h"
#include "platform/offline/faults.h"
#include "platform/offline/files/drives.h"
#include "platform/offline/files/other_half.h"
#include "platform/offline/files/volume.h"
#include "platform/offline/handle_table.h"
#include "platform/offline/locale/clock.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/locale.h"
#include "platform/offline/network/tcp.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {

struct OsVersion {
    DWORD platform = 2;
    DWORD major = 5;
    DWORD minor = 1;
    DWORD build = 2600;
    [[nodiscard]] bool isNt() const { return platform == 2; }
};
// By name ("Windows 98 SE") or as "platform.major.minor.build"; nothing for a text that is neither.
[[nodiscard]] std::optional<OsVersion> osByName(std::string_view name);

struct ScreenSize {
    int width = 1024;  // pixels
    int height = 768;
    int dpi = 96;
};

// Thrown by TerminateProcess: the program ends here. Not a Failure, so that no handler of the program catches
// it.
struct ProcessEnded {
    unsigned exitCode;
};

// What a library does when its registration entry is called.
struct LibraryEntry {
    bool exists = true;
    LONG result = 0;
};

// The last requests to the shell and to the start of programs, with what the events leave out. Pointers among
// them are of no use any more.
struct LastRequests {
    NOTIFYICONDATAA trayIcon{};
    SHFILEOPSTRUCTA deletion{};
    std::string deletionTitle;
    BROWSEINFOA folderDialog{};
    std::string switches;  // of ShellExecuteA
    int startState = -1;   // of CreateProcessA: how the window opens; -1 where the caller leaves it open
    DWORD startFlags = 0;  // of CreateProcessA
};

// What the user may do from Windows Vista on, and what he answers when the system asks for a program's
// rights. Before, and with a full token, he may do everything.
struct Rights {
    enum class Token { Full, Limited, Standard };
    enum class Answer { Agrees, Declines, Fails };
    struct Question {
        std::string file;
        std::string arguments;
        std::string folder;
        bool operator==(const Question&) const = default;
    };
    Token token = Token::Full;
    Answer answer = Answer::Declines;
    bool startsAtOnce = true;  // a program that was agreed to holds the mutex of a previous instance
    std::vector<Question> asked;
};

class Machine {
  public:
    Machine();

    Faults faults;
    DWORD lastError = 0;
    TextRules textRules;
    Clock clock;
    Locale locale = germanLocale();
    OtherHalf otherHalf;
    Registry registry{otherHalf};
    Drives drives{clock, otherHalf};
    HandleTable<KernelObject> kernelObjects;
    HandleTable<Search> searches;
    Connect connect = connectByTcp;   // to the servers of web addresses
    std::size_t internetHandles = 0;  // sessions and addresses that were opened and not closed
    Events events;
    Pump pump{clock};
    ScreenSize screen;

    LastRequests lastRequests;

    std::string user = "Benutzer";
    std::string computer = "RECHNER";
    // What a terminal server tells the user as the folder of Windows; empty: the machine's.
    std::u16string userWindowsFolder;
    // Environment variables beside the machine's own, by their names in upper case.
    std::map<std::string, std::u16string, std::less<>> environment;
    std::string commandLine;      // without the program's own name
    std::string toldCommandLine;  // what GetCommandLineA has given
    std::string exeName = "Bromvale.exe";
    bool previousInstance = false;
    std::set<std::string, std::less<>>
        otherMutexes;  // those of other processes, beside a previous instance's
    Rights rights;
    bool terminateReturns = false;  // TerminateProcess comes back instead of throwing ProcessEnded
    bool shutdownPrivilege = true;  // AdjustTokenPrivileges can switch it on

    // Answers to the next message boxes. Without one: IDOK, IDNO for Yes and No, else IDCANCEL.
    std::deque<int> answers;
    // Folders that the next folder dialogs choose; without one they are cancelled.
    std::deque<WideText> folders;
    // Files that the next dialogs "save as" name; without one they are cancelled.
    std::deque<std::string> savePaths;
    // What registration entries answer and lack, by the library's path; any other one answers 0 and lacks
    // nothing.
    std::map<std::string, LibraryEntry> libraryEntries;
    // The libraries that were loaded; a module is its number in here, from 1.
    std::vector<std::string> modules;
    // Library and name of the entry that was looked up last.
    std::pair<std::string, std::string> lookedUpEntry;
    // The next pop-up menus' choices: names of entries, or captions without "&". Without one a menu is left.
    std::deque<std::string> menuChoices;
    // Asked by a menu that finds no choice above; an empty answer leaves it.
    std::function<std::string()> askForMenuChoice;

    [[nodiscard]] const OsVersion& os() const { return os_; }
    void setOs(const OsVersion& os);
    // Keys below HKEY_LOCAL_MACHINE are closed to the program.
    [[nodiscard]] bool lacksMachineRights() const;
    // Without a trailing backslash; also the current directory.
    [[nodiscard]] std::string appPath() const;
    void setAppPath(const WideText& path);
    // With the program's name, in the stored form of stored_text.h.
    [[nodiscard]] std::string programPath() const { return appPath_ + "\\" + exeName; }

    // In the stored form, without a trailing backslash. Whole paths with a drive; C:\WINDOWS and C:\Programme
    // until a disk says otherwise.
    void setFolders(std::string_view windows, std::string_view programs);
    [[nodiscard]] std::string windowsFolder() const { return otherHalf.windows; }
    [[nodiscard]] std::string systemFolder() const;
    [[nodiscard]] std::string tempFolder() const { return windowsFolder() + "\\TEMP"; }
    [[nodiscard]] std::string programFiles() const { return programs_; }
    // Files that were opened and not closed.
    [[nodiscard]] std::size_t openFiles() const;
    // Makes the machine's own folders where they live in memory. Called by the setters; needed after drives
    // change.
    void prepareFolders();

  private:
    OsVersion os_;
    std::string programs_ = "C:\\Programme";  // in the stored form, as the next
    std::string appPath_ = "C:\\Programme\\Bromvale";
};

Machine& machine();

// On the 9x family, which has no wide functions: sets ERROR_CALL_NOT_IMPLEMENTED and returns true.
[[nodiscard]] bool refusesWide();

// A fault that is due for the operation: sets the last error and returns true. Each function of the platform
// asks before it does anything else; tests/offline/fault_points_test.cpp proves that none forgets it.
[[nodiscard]] bool failsHere(std::string_view operation);

// Sets the last error and gives what the function answers where it fails.
template <class Answer = BOOL>
Answer failed(DWORD error, Answer answer = FALSE) {
    SetLastError(error);
    return answer;
}

}  // namespace bromvale::offline
