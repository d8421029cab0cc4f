#include <deque>

#include "platform/win32/system/windows.h"
#include "tests/support/provider.h"

namespace bromvale::testing {
namespace {

constexpr int kBoxText = 0xFFFF;  // control number of a message box's text

std::deque<int> answers;
std::vector<ShownBox> boxes;
HHOOK hook = nullptr;

std::string textOf(HWND window) {
    std::string text(4096, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), 4096)));
    return text;
}

int nextAnswer(HWND box) {
    if (answers.empty()) return GetDlgItem(box, IDNO) != nullptr ? IDNO : IDOK;
    const int id = answers.front();
    answers.pop_front();
    return id;
}

// A message box that has just been set up is answered by the press of one of its buttons, as a user would.
LRESULT CALLBACK watchDialogs(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    if (code == HC_ACTION && message.message == WM_INITDIALOG) {
        const HWND text = GetDlgItem(message.hwnd, kBoxText);
        if (text != nullptr) {
            boxes.push_back({textOf(text), textOf(message.hwnd), 0});
            const int id = nextAnswer(message.hwnd);
            PostMessageA(message.hwnd, WM_COMMAND, static_cast<WPARAM>(id),
                         reinterpret_cast<LPARAM>(GetDlgItem(message.hwnd, id)));
        }
    }
    return CallNextHookEx(hook, code, wParam, lParam);
}

std::string ownKey() {
    return "Software\\BromvaleTests\\" + std::to_string(GetCurrentProcessId());
}

void redirect(HKEY hive, const std::string& path) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                              nullptr),
              0);
    ASSERT_EQ(RegOverridePredefKey(hive, key), 0);
    RegCloseKey(key);
}

const WCHAR* wide(const std::u16string& text) {
    return reinterpret_cast<const WCHAR*>(text.c_str());
}

// By the names that Windows keeps: a test may have made some that the code page lacks.
void deleteTree(HKEY parent, const std::wstring& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_ALL_ACCESS, &key) != 0) return;
    WCHAR name[256];
    while (RegEnumKeyW(key, 0, name, 256) == 0) {
        deleteTree(key, name);
        HKEY left = nullptr;
        if (RegOpenKeyExW(key, name, 0, KEY_QUERY_VALUE, &left) != 0) continue;
        RegCloseKey(left);  // refuses to go; the test that meets it will tell
        break;
    }
    RegCloseKey(key);
    RegDeleteKeyW(parent, path.c_str());
}

void deleteTree(HKEY parent, const std::string& path) {
    deleteTree(parent, std::wstring(path.begin(), path.end()));
}

void deleteFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((folder + L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        SetFileAttributesW((folder + name).c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            deleteFolder(folder + name + L"\\");
        } else {
            DeleteFileW((folder + name).c_str());
        }
    } while (FindNextFileW(search, &found) != 0);
    FindClose(search);
    RemoveDirectoryW(folder.c_str());
}

void deleteFolder(const std::string& folder) {
    wchar_t wide[MAX_PATH] = L"";
    MultiByteToWideChar(CP_ACP, 0, folder.c_str(), -1, wide, MAX_PATH);
    deleteFolder(std::wstring(wide));
}

HKEY createWideKey(HKEY hive, std::u16string_view path) {
    HKEY key = nullptr;
    const std::u16string text(path);
    const LONG status = RegCreateKeyExW(hive, wide(text), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    return status == ERROR_SUCCESS ? key : nullptr;
}

}  // namespace

std::string beginTest() {
    char temporary[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, temporary);
    std::string folder = std::string(temporary) + "bromvale-" + std::to_string(GetCurrentProcessId()) + "\\";
    deleteFolder(folder);
    CreateDirectoryA(folder.c_str(), nullptr);
    deleteTree(HKEY_CURRENT_USER, ownKey());
    // HKEY_CURRENT_USER last: the other one is found through it.
    redirect(HKEY_LOCAL_MACHINE, ownKey() + "\\HKLM");
    redirect(HKEY_CURRENT_USER, ownKey() + "\\HKCU");
    hook = SetWindowsHookExA(WH_CALLWNDPROCRET, watchDialogs, nullptr, GetCurrentThreadId());
    return folder;
}

void endTest(const std::string& folder) {
    UnhookWindowsHookEx(hook);
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    deleteTree(HKEY_CURRENT_USER, ownKey());
    SetCurrentDirectoryA("C:\\");
    deleteFolder(folder);
}

bool makeTrueKey(HKEY hive, std::u16string_view path) {
    const HKEY key = createWideKey(hive, path);
    return key != nullptr && RegCloseKey(key) == ERROR_SUCCESS;
}

bool setTrueString(HKEY hive, std::u16string_view path, std::u16string_view name, std::u16string_view text) {
    const HKEY key = createWideKey(hive, path);
    if (key == nullptr) return false;
    const std::u16string data(text);
    const LONG status = RegSetValueExW(key, wide(std::u16string(name)), 0, REG_SZ,
                                       reinterpret_cast<const BYTE*>(data.c_str()),
                                       static_cast<DWORD>((data.size() + 1) * sizeof(char16_t)));
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}

bool trueKeyExists(HKEY hive, std::u16string_view path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive, wide(std::u16string(path)), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

bool writeTrueFile(const std::u16string& path, std::string_view bytes) {
    const HANDLE file =
        CreateFileW(wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    return written == bytes.size();
}

bool makeTrueFolder(const std::u16string& path) {
    return CreateDirectoryW(wide(path), nullptr) != 0;
}

bool trueFileExists(const std::u16string& path) {
    return GetFileAttributesW(wide(path)) != INVALID_FILE_ATTRIBUTES;
}

void answerNextBox(int id) {
    answers.push_back(id);
}

const std::vector<ShownBox>& shownBoxes() {
    return boxes;
}

}  // namespace bromvale::testing
