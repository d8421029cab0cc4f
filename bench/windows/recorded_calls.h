#pragma once
#include <array>
#include <string>
#include <vector>

#include "bench/windows/call_record.h"
#include "platform/win32/system/windows.h"

namespace bench {

struct Step {
    Record record;
    std::string text;  // of a wide function UTF-16; a NUL of either width stands behind it
};

// The record file of the current folder; empty where there is none.
[[nodiscard]] std::vector<Step> readSteps();

// Makes calls anew, one after the other, on handles of its own.
class Replay {
  public:
    // With `ansi` the wide functions that read the registry are replaced by the ANSI ones that they stand
    // for, with the buffer sizes of those (the limits of a scan).
    Replay(std::size_t steps, bool ansi);
    void make(const Step& step);
    // Later calls keep their handles.
    void leaveOut(const Step& step);

  private:
    void callRegistry(const Step& step);
    void readRegistry(const Step& step);
    void readRegistryWide(const Step& step);
    void callFiles(const Step& step);
    void searchFiles(const Step& step);
    [[nodiscard]] HKEY key(std::int32_t number) const;
    [[nodiscard]] HANDLE file(std::int32_t number) const;
    HKEY* newKey() { return &keys_.emplace_back(nullptr); }

    bool ansi_;
    std::vector<HKEY> keys_{nullptr};
    std::vector<HANDLE> files_{INVALID_HANDLE_VALUE};
    std::array<char, 4096> name_{};
    std::array<WCHAR, 32768> wideName_{};
    std::array<BYTE, 65536> data_{};
    WIN32_FIND_DATAA found_{};
    WIN32_FIND_DATAW wideFound_{};
    DWORD(WINAPI* finalPath_)(HANDLE, LPWSTR, DWORD, DWORD) = nullptr;
};

}  // namespace bench
