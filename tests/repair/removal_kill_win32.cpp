// The process is ended at every call of the system that a removal makes, in a process of its own each time.
// Whatever the moment: a key that is gone has its record in the undo file and is whole in the complete copy.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "core/state.h"
#include "platform/win32/system/windows.h"
#include "ui/frm_main.h"

namespace bromvale::testing {
namespace {

constexpr DWORD kKilled = 9;
constexpr const char* kNames = "ABC";

std::string variable(const char* name) {
    char text[MAX_PATH] = "";
    return {text, GetEnvironmentVariableA(name, text, MAX_PATH)};
}

// --- in the process that is ended ---

long callsLeft = 0;

void countCall() {
    if (callsLeft > 0 && --callsLeft == 0) TerminateProcess(GetCurrentProcess(), kKilled);
}

// Stands in the program's import table in the place of the system's function.
template <int Number, class Result, class... Arguments>
struct Detour {
    static inline Result(WINAPI* original)(Arguments...) = nullptr;
    static Result WINAPI call(Arguments... arguments) {
        countCall();
        return original(arguments...);
    }
};

ULONG_PTR* importSlot(const char* name) {
    auto* const base = reinterpret_cast<BYTE*>(GetModuleHandleA(nullptr));
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* const entry =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(entry->Name), name) == 0)
                return reinterpret_cast<ULONG_PTR*>(&slot->u1.Function);
        }
    }
    return nullptr;
}

template <int Number, class Result, class... Arguments>
void detour(const char* name, Result(WINAPI* original)(Arguments...)) {
    using Here = Detour<Number, Result, Arguments...>;
    Here::original = original;
    ULONG_PTR* const slot = importSlot(name);
    ASSERT_NE(slot, nullptr) << name;
    DWORD before = 0;
    VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &before);
    *slot = reinterpret_cast<ULONG_PTR>(&Here::call);
    VirtualProtect(slot, sizeof(*slot), before, &before);
}

TEST(RemovalKill, TheProcessThatIsEnded) {
    const std::string key = variable("BROMVALE_KILL_KEY");
    if (key.empty()) GTEST_SKIP() << "started by the test below";
    BackupPath = variable("BROMVALE_KILL_FOLDER");
    RegFileHeader = "REGEDIT4\r\n\r\n";
    for (const char* name = kNames; *name != '\0'; ++name) {
        frmMain().scan.lvwRegKeys.add({"[HKEY_CURRENT_USER\\" + key + "\\" + *name + "]", "@",
                                       std::string("Wert ") + *name, "-2147483647"},
                                      1);
    }
    detour<1>("CreateFileA", &CreateFileA);
    detour<2>("WriteFile", &WriteFile);
    detour<3>("SetFilePointer", &SetFilePointer);
    detour<4>("CloseHandle", &CloseHandle);
    detour<5>("CreateDirectoryA", &CreateDirectoryA);
    detour<6>("RegOpenKeyExA", &RegOpenKeyExA);
    detour<7>("RegDeleteKeyA", &RegDeleteKeyA);
    detour<8>("RegCloseKey", &RegCloseKey);
    callsLeft = std::atol(variable("BROMVALE_KILL_AT").c_str());
    frmMain().scan.ProblemeEntfernen();
    callsLeft = 0;
    TerminateProcess(GetCurrentProcess(), 0);
}

// --- in the process that looks ---

class KillRun {
  public:
    KillRun() {
        const std::string own = std::to_string(GetCurrentProcessId());
        char temporary[MAX_PATH] = "";
        GetTempPathA(MAX_PATH, temporary);
        folder_ = std::string(temporary) + "bromvale-kill-" + own + "\\";
        key_ = "Software\\BromvaleKill" + own;
        SetEnvironmentVariableA("BROMVALE_KILL_KEY", key_.c_str());
        SetEnvironmentVariableA("BROMVALE_KILL_FOLDER", folder_.c_str());
    }
    ~KillRun() {
        clear();
        RegDeleteKeyA(HKEY_CURRENT_USER, key_.c_str());
        SetEnvironmentVariableA("BROMVALE_KILL_KEY", nullptr);
    }

    DWORD removeAndKillAt(long nth) {
        clear();
        for (const char* name = kNames; *name != '\0'; ++name) {
            HKEY made = nullptr;
            EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, keyOf(*name).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                      nullptr, &made, nullptr),
                      0);
            const DWORD number = 7;
            RegSetValueExA(made, "Zahl", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
            RegCloseKey(made);
        }
        SetEnvironmentVariableA("BROMVALE_KILL_AT", std::to_string(nth).c_str());
        char program[MAX_PATH] = "";
        GetModuleFileNameA(nullptr, program, MAX_PATH);
        std::string command =
            std::string("\"").append(program) + "\" --gtest_filter=RemovalKill.TheProcessThatIsEnded";
        STARTUPINFOA start{};
        start.cb = sizeof(start);
        PROCESS_INFORMATION process{};
        if (CreateProcessA(program, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                           &process) == 0)
            return 1;
        WaitForSingleObject(process.hProcess, INFINITE);
        DWORD code = 1;
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return code;
    }

    std::string gone() const {
        std::string names;
        for (const char* name = kNames; *name != '\0'; ++name) {
            HKEY key = nullptr;
            if (RegOpenKeyExA(HKEY_CURRENT_USER, keyOf(*name).c_str(), 0, KEY_READ, &key) != 0) {
                names += *name;
            } else {
                RegCloseKey(key);
            }
        }
        return names;
    }
    std::string recordOf(char name) const {
        return "[HKEY_CURRENT_USER\\" + keyOf(name) + "]\r\n@=\"Wert " + name + "\"\r\n\r\n";
    }
    // The wide form of Windows 2000 and later.
    std::string copyOf(char name) const {
        const std::string text =
            "\r\n[HKEY_CURRENT_USER\\" + keyOf(name) + "]\r\n\"Zahl\"=dword:00000007\r\n";
        std::string wide;
        for (const char c : text) wide += {c, '\0'};
        return wide;
    }
    std::string fileBytes() const {
        std::string bytes;
        forEachFile([&](const std::string& path) {
            const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                            nullptr, OPEN_EXISTING, 0, nullptr);
            char block[65536];
            DWORD size = 0;
            if (ReadFile(file, block, sizeof(block), &size, nullptr) != 0) bytes.append(block, size);
            CloseHandle(file);
        });
        return bytes;
    }

  private:
    std::string keyOf(char name) const { return key_ + "\\" + name; }
    template <class Action>
    void forEachFile(const Action& action) const {
        WIN32_FIND_DATAA found{};
        const HANDLE search = FindFirstFileA((folder_ + "*.reg").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) return;
        do {
            action(folder_ + found.cFileName);
        } while (FindNextFileA(search, &found) != 0);
        FindClose(search);
    }
    void clear() {
        for (const char* name = kNames; *name != '\0'; ++name)
            RegDeleteKeyA(HKEY_CURRENT_USER, keyOf(*name).c_str());
        forEachFile([](const std::string& path) { DeleteFileA(path.c_str()); });
        RemoveDirectoryA(folder_.c_str());
    }

    std::string folder_;
    std::string key_;
};

TEST(RemovalKill, AtEveryCallEachDeletedKeyHasItsRecord) {
    KillRun run;
    std::string gone;
    int kills = 0;
    for (long nth = 1;; ++nth) {
        const DWORD code = run.removeAndKillAt(nth);
        gone = run.gone();
        const std::string bytes = run.fileBytes();
        for (const char name : gone) {
            EXPECT_NE(bytes.find(run.recordOf(name)), std::string::npos)
                << "ended at call " << nth << ", no record of " << name;
            EXPECT_NE(bytes.find(run.copyOf(name)), std::string::npos)
                << "ended at call " << nth << ", no whole copy of " << name;
        }
        if (code == 0) break;
        ASSERT_EQ(code, kKilled) << nth;
        ++kills;
    }
    EXPECT_EQ(gone, "ABC");
    // Folder and file, seven header writes and the copy's file, then per row two writes, and an open and a
    // close each for the reading and for the deletion.
    EXPECT_GE(kills, 2 + 7 + 1 + 3 * 7);
}

}  // namespace
}  // namespace bromvale::testing
