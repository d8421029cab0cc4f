#pragma once
// Provider-neutral ground for tests: a fresh registry, a fresh program folder, recorded message boxes. Each
// test runs in a process of its own. Offline it is the process's machine; on Windows the hives
// HKEY_LOCAL_MACHINE and HKEY_CURRENT_USER are redirected to an empty key of the test's own, and folders lie
// in the temporary folder.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"

namespace bromvale::testing {

struct ShownBox {
    std::string text;
    std::string caption;
    std::uint32_t style;  // 0 on Windows, where a box doesn't tell it
};

// A value as it is stored, texts with their NUL.
struct StoredValue {
    std::uint32_t type = 0;
    std::string bytes;
    bool operator==(const StoredValue&) const = default;
};

class TestMachine : public ::testing::Test {
  protected:
    TestMachine();
    ~TestMachine() override;

    // Sets AppTitle "Bromvale", AppVersion "1.0.0", AppPath, BackupPath, WinDir, ProgramFilesDir, OSName,
    // RegFileHeader, ... as Main would, without running it, and the settings key with all switches 0
    // (Protokoll off).
    void fillState();
    // Protokoll 1 in key and variable: from here on every routine traces.
    void switchTracingOn();

    // An existing, empty folder of this test, with a trailing backslash; AppPath after fillState, and the
    // current directory from the start.
    [[nodiscard]] const std::string& folder() const { return folder_; }

    // --- registry, by platform calls ---
    void makeKey(HKEY hive, std::string_view path);
    void setString(HKEY hive, std::string_view path, std::string_view name,
                   std::string_view text);  // REG_SZ with NUL
    // Exactly these bytes: no NUL is added.
    void setRaw(HKEY hive, std::string_view path, std::string_view name, std::uint32_t type,
                std::string_view bytes);
    [[nodiscard]] bool keyExists(HKEY hive, std::string_view path);
    // Text of a string value without its NUL; "<missing>" where there is none.
    [[nodiscard]] std::string stringValue(HKEY hive, std::string_view path, std::string_view name);
    // Type 0xFFFFFFFF where there is none.
    [[nodiscard]] StoredValue storedValue(HKEY hive, std::string_view path, std::string_view name);
    // Names of a key's values in the order of their enumeration.
    [[nodiscard]] std::vector<std::string> valueNames(HKEY hive, std::string_view path);

    // The classes that the start-up check looks for, with names of our own, and the one file: a machine on
    // which nothing is missing. `systemFolder` with a trailing backslash.
    void makeComponents(const std::string& systemFolder);

    // The same with names and texts that the code page may lack: what Windows keeps is given.
    void makeKey(HKEY hive, std::u16string_view path);
    void setString(HKEY hive, std::u16string_view path, std::u16string_view name, std::u16string_view text);
    [[nodiscard]] bool keyExists(HKEY hive, std::u16string_view path);

    // --- files ---
    void writeWholeFile(const std::string& path, std::string_view bytes);
    [[nodiscard]] std::string readWholeFile(const std::string& path);  // "<missing>" where there is none
    void makeFolderOnDisk(const std::string& path);
    // The same with names that the code page may lack.
    void writeWholeFile(const std::u16string& path, std::string_view bytes);
    void makeFolderOnDisk(const std::u16string& path);
    [[nodiscard]] bool isOnDisk(const std::u16string& path);
    // folder() for those names.
    [[nodiscard]] std::u16string wideFolder() const { return {folder_.begin(), folder_.end()}; }
    // Names in a folder that match the pattern, sorted.
    [[nodiscard]] std::vector<std::string> filesIn(const std::string& folder, std::string_view pattern);
    // Records of AppPath's bromvale.log without date and time: "modMain; Main; Text; 0; ".
    [[nodiscard]] std::vector<std::string> logLines();

    // --- message boxes ---
    // The answer to the next box (IDYES, IDNO, IDOK); without one IDOK, or IDNO for a box with Yes and No.
    void answer(int id);
    [[nodiscard]] const std::vector<ShownBox>& boxes() const;

    // Runs `action` at the n-th DoEvents from now (1: the next one).
    void atPump(int n, std::function<void()> action);

  private:
    std::string folder_;
};

}  // namespace bromvale::testing
