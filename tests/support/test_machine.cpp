#include "tests/support/test_machine.h"

#include <algorithm>
#include <map>
#include <utility>

#include "core/settings.h"
#include "core/state.h"
#include "platform/events.h"
#include "platform/files.h"
#include "tests/support/provider.h"

namespace bromvale::testing {
namespace {

constexpr std::uint32_t kNoValue = 0xFFFFFFFF;

// The values of the settings key; numbers and switches as a machine has them whose options were never
// touched.
constexpr std::pair<const char*, const char*> kSettings[] = {
    {"1stRun", "0"},
    {"AgentLoad", "0"},
    {"AutoClose", "0"},
    {"AutoEntfernen", "0"},
    {"AutoFileDelAfterReentry", "0"},
    {"AutoRegFileDel", "0"},
    {"AutoScan", "0"},
    {"DelAfterDays", "50"},
    {"DelFilePermanent", "0"},
    {"Form_Height", "7700"},
    {"Form_Width", "10515"},
    {"Protokoll", "0"},
    {"Proxy", "0"},
    {"ProxyAdresse", "0.0.0.0"},
    {"ProxyPort", "80"},
    {"RebootAfterDelete", "0"},
    {"RebootAfterEntry", "0"},
    {"ScreenSave", "0"},
    {"ScreenX", "0"},
    {"ScreenY", "0"},
};

std::map<int, std::function<void()>>& pumpActions() {
    static std::map<int, std::function<void()>> actions;
    return actions;
}

int pumps = 0;

void pumped() {
    const auto due = pumpActions().find(++pumps);
    if (due == pumpActions().end()) return;
    const auto action = std::move(due->second);
    pumpActions().erase(due);
    action();
}

// An open key of a test, closed with it; null where there is none.
class Key {
  public:
    Key(HKEY hive, std::string_view path) {
        if (RegOpenKeyExA(hive, std::string(path).c_str(), 0, KEY_READ, &key_) != 0) key_ = nullptr;
    }
    Key(const Key&) = delete;
    ~Key() {
        if (key_ != nullptr) static_cast<void>(RegCloseKey(key_));
    }
    [[nodiscard]] HKEY get() const { return key_; }

  private:
    HKEY key_ = nullptr;
};

std::string withoutDateAndTime(const std::string& line) {
    const std::size_t end = line.find("; ");
    return end == std::string::npos ? line : line.substr(end + 2);
}

}  // namespace

TestMachine::TestMachine() : folder_(beginTest()) {
    SetCurrentDirectoryA(folder_.c_str());
}

TestMachine::~TestMachine() {
    setPumpObserver(nullptr);
    endTest(folder_);
}

void TestMachine::fillState() {
    AppTitle = "Bromvale";
    AppVersion = "1.0.0";
    AppTarget = "für Windows 98/ME und NT4";
    AppPath = folder_;
    BackupPath = AppPath + "Backup\\";
    WinDir = "C:\\WINDOWS\\";
    SysDir = "C:\\WINDOWS\\SYSTEM32\\";
    TmpDir = "C:\\WINDOWS\\TEMP\\";
    ProgramFilesDir = "C:\\Programme\\";
    AgentDir = WinDir + "msagent\\";
    AgentCharsDir = WinDir + "msagent\\chars\\";
    ComputerName = "RECHNER";
    UserName = "Benutzer";
    OSName = "Windows XP";
    OSBuild = "2600";
    RegFileHeader = "Windows Registry Editor Version 5.00\r\n\r\n";
    for (const auto& [name, text] : kSettings) setString(HKEY_CURRENT_USER, kSettingsKey, name, text);
    ReadAppSwitch();
}

void TestMachine::switchTracingOn() {
    setString(HKEY_CURRENT_USER, kSettingsKey, "Protokoll", "1");
    Protokoll = 1;
    LogAlways = true;
}

void TestMachine::makeKey(HKEY hive, std::string_view path) {
    HKEY key = nullptr;
    ASSERT_EQ(
        RegCreateKeyExA(hive, std::string(path).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
        0);
    static_cast<void>(RegCloseKey(key));
}

void TestMachine::setString(HKEY hive, std::string_view path, std::string_view name, std::string_view text) {
    setRaw(hive, path, name, REG_SZ, std::string(text) + '\0');
}

void TestMachine::setRaw(HKEY hive, std::string_view path, std::string_view name, std::uint32_t type,
                         std::string_view bytes) {
    HKEY key = nullptr;
    ASSERT_EQ(
        RegCreateKeyExA(hive, std::string(path).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
        0);
    // A byte other than NUL behind the data, which a text's length would otherwise take in.
    const std::string guarded = std::string(bytes) + '\x01';
    EXPECT_EQ(RegSetValueExA(key, std::string(name).c_str(), 0, type,
                             reinterpret_cast<const BYTE*>(guarded.data()), static_cast<DWORD>(bytes.size())),
              0);
    static_cast<void>(RegCloseKey(key));
}

bool TestMachine::keyExists(HKEY hive, std::string_view path) {
    return Key(hive, path).get() != nullptr;
}

void TestMachine::makeKey(HKEY hive, std::u16string_view path) {
    ASSERT_TRUE(makeTrueKey(hive, path));
}

void TestMachine::setString(HKEY hive, std::u16string_view path, std::u16string_view name,
                            std::u16string_view text) {
    ASSERT_TRUE(setTrueString(hive, path, name, text));
}

bool TestMachine::keyExists(HKEY hive, std::u16string_view path) {
    return trueKeyExists(hive, path);
}

std::string TestMachine::stringValue(HKEY hive, std::string_view path, std::string_view name) {
    const StoredValue stored = storedValue(hive, path, name);
    if (stored.type == kNoValue) return "<missing>";
    return stored.bytes.substr(0, stored.bytes.find('\0'));
}

StoredValue TestMachine::storedValue(HKEY hive, std::string_view path, std::string_view name) {
    const Key key(hive, path);
    const std::string nameText(name);
    DWORD type = 0;
    DWORD size = 0;
    if (key.get() == nullptr ||
        RegQueryValueExA(key.get(), nameText.c_str(), nullptr, &type, nullptr, &size) != 0) {
        return {kNoValue, {}};
    }
    std::string bytes(size, '?');
    if (size > 0) {
        EXPECT_EQ(RegQueryValueExA(key.get(), nameText.c_str(), nullptr, &type,
                                   reinterpret_cast<BYTE*>(bytes.data()), &size),
                  0);
    }
    return {type, bytes.substr(0, size)};
}

std::vector<std::string> TestMachine::valueNames(HKEY hive, std::string_view path) {
    const Key key(hive, path);
    std::vector<std::string> names;
    for (DWORD index = 0; key.get() != nullptr; ++index) {
        std::string name(256, '\0');
        DWORD length = 256;
        if (RegEnumValueA(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != 0)
            break;
        names.push_back(name.substr(0, length));
    }
    return names;
}

void TestMachine::makeComponents(const std::string& systemFolder) {
    for (const char* id : {"{71A27032-C7D8-11D2-BEF8-525400DFB47A}", "{FE1D1F9D-EC4B-11D3-B06C-00500427A693}",
                           "{396F7AC9-A0DD-11D3-93EC-00C0DFE7442A}", "{4662DAB0-D393-11D0-9A56-00C04FB68B66}",
                           "{1EFB6596-857C-11D1-B16A-00C0F0283628}", "{D5DE8D20-5BB8-11D1-A1E3-00A0C90F2731}",
                           "{248DD896-BB45-11CF-9ABC-0080C7E7B78D}"}) {
        setString(HKEY_LOCAL_MACHINE, std::string("Software\\Classes\\CLSID\\") + id, "", "Bromvale: Test");
    }
    writeWholeFile(systemFolder + "wininet.dll", "");
}

void TestMachine::writeWholeFile(const std::string& path, std::string_view bytes) {
    const HANDLE file =
        CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE) << path;
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    EXPECT_EQ(written, bytes.size());
    CloseHandle(file);
}

std::string TestMachine::readWholeFile(const std::string& path) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "<missing>";
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD got = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
    CloseHandle(file);
    return bytes.substr(0, got);
}

void TestMachine::makeFolderOnDisk(const std::string& path) {
    ASSERT_NE(CreateDirectoryA(path.c_str(), nullptr), 0) << path;
}

void TestMachine::writeWholeFile(const std::u16string& path, std::string_view bytes) {
    ASSERT_TRUE(writeTrueFile(path, bytes));
}

void TestMachine::makeFolderOnDisk(const std::u16string& path) {
    ASSERT_TRUE(makeTrueFolder(path));
}

bool TestMachine::isOnDisk(const std::u16string& path) {
    return trueFileExists(path);
}

std::vector<std::string> TestMachine::filesIn(const std::string& folder, std::string_view pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA((folder + std::string(pattern)).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        const std::string name = found.cFileName;
        if (name != "." && name != "..") names.push_back(name);
    } while (FindNextFileA(search, &found) != 0);
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> TestMachine::logLines() {
    std::vector<std::string> lines;
    const std::string path = folder_ + "bromvale.log";
    const std::string all = readWholeFile(path);
    if (all == "<missing>") return lines;
    for (std::size_t at = 0; at < all.size();) {
        const std::size_t end = std::min(all.find("\r\n", at), all.size());
        lines.push_back(withoutDateAndTime(all.substr(at, end - at)));
        at = end + 2;
    }
    return lines;
}

void TestMachine::answer(int id) {
    answerNextBox(id);
}

const std::vector<ShownBox>& TestMachine::boxes() const {
    return shownBoxes();
}

void TestMachine::atPump(int n, std::function<void()> action) {
    pumpActions()[pumps + n] = std::move(action);
    setPumpObserver(pumped);
}

}  // namespace bromvale::testing
