#include <deque>

#include "platform/win32/windows.h"
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

void deleteTree(HKEY parent, const std::string& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(parent, path.c_str(), 0, KEY_ALL_ACCESS, &key) != 0) return;
    char name[256];
    while (RegEnumKeyA(key, 0, name, sizeof(name)) == 0) {
        deleteTree(key, name);
        HKEY left = nullptr;
        if (RegOpenKeyExA(key, name, 0, KEY_QUERY_VALUE, &left) != 0) continue;
        RegCloseKey(left);  // refuses to go; the test that meets it will tell
        break;
    }
    RegCloseKey(key);
    RegDeleteKeyA(parent, path.c_str());
}

// By its wide functions, so that names beyond the code page go, too.
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

}  // namespace

std::string beginTest() {
    char temporary[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, temporary);
    const std::string folder =
        std::string(temporary) + "bromvale-" + std::to_string(GetCurrentProcessId()) + "\\";
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

void answerNextBox(int id) {
    answers.push_back(id);
}

const std::vector<ShownBox>& shownBoxes() {
    return boxes;
}

}  // namespace bromvale::testing
