// Makes the registry, file and message-queue calls of a recorded scan, in their order and with their buffer
// sizes, and nothing else. Prints the milliseconds that they took.
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/windows/call_record.h"
#include "platform/win32/system/windows.h"

namespace {

using bench::Call;
using bench::Record;

struct Step {
    Record record;
    std::string text;
};

std::vector<Step> readSteps() {
    std::vector<Step> steps;
    std::FILE* file = std::fopen(bench::kRecordFile, "rb");
    if (!file) return steps;
    Record record;
    while (std::fread(&record, sizeof record, 1, file) == 1) {
        std::string text(record.length, '\0');
        if (record.length && std::fread(text.data(), 1, text.size(), file) != text.size()) break;
        steps.push_back({record, std::move(text)});
    }
    std::fclose(file);
    return steps;
}

class Replay {
  public:
    explicit Replay(std::size_t count) {
        keys_.reserve(count);
        keys_.push_back(nullptr);
    }

    void make(const Step& step) {
        const Record& record = step.record;
        DWORD nameSize = record.nameSize;
        DWORD dataSize = record.dataSize;
        DWORD type = 0;
        BYTE* data = record.hasData ? data_.data() : nullptr;
        switch (record.call) {
            case Call::OpenKey: RegOpenKeyA(key(record.key), step.text.c_str(), open()); break;
            case Call::OpenKeyEx:
                RegOpenKeyExA(key(record.key), step.text.c_str(), 0, record.index, open());
                break;
            case Call::CloseKey: RegCloseKey(key(record.key)); break;
            case Call::EnumValue:
                RegEnumValueA(key(record.key), record.index, name_.data(), &nameSize, nullptr, &type, data,
                              &dataSize);
                break;
            case Call::EnumKey: RegEnumKeyA(key(record.key), record.index, name_.data(), nameSize); break;
            case Call::QueryValue:
                RegQueryValueExA(key(record.key), step.text.c_str(), nullptr, &type, data, &dataSize);
                break;
            case Call::FindFirst: find_ = FindFirstFileA(step.text.c_str(), &found_); break;
            case Call::FindClose: FindClose(find_); break;
            case Call::Peek: {
                MSG message;
                PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
                break;
            }
        }
    }

  private:
    HKEY key(std::int32_t number) const {
        if (number < 0) return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(number));
        return static_cast<std::size_t>(number) < keys_.size() ? keys_[static_cast<std::size_t>(number)]
                                                               : nullptr;
    }
    HKEY* open() {
        keys_.push_back(nullptr);
        return &keys_.back();
    }

    std::vector<HKEY> keys_;
    std::array<char, 4096> name_{};
    std::array<BYTE, 65536> data_{};
    WIN32_FIND_DATAA found_{};
    HANDLE find_ = INVALID_HANDLE_VALUE;
};

}  // namespace

int main() {
    const std::vector<Step> steps = readSteps();
    if (steps.empty()) {
        std::puts("bare_calls: no record; run scan_recorder first");
        return 1;
    }
    // A look into the queue of a program that shows nothing is another call: no screen has to be asked.
    CreateWindowA("STATIC", "bare_calls", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 640, 480, nullptr, nullptr,
                  nullptr, nullptr);
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
    Replay replay(steps.size());
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    for (const Step& step : steps) replay.make(step);
    QueryPerformanceCounter(&end);
    std::printf("bare_calls calls=%zu ms=%.1f\n", steps.size(),
                1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) /
                    static_cast<double>(frequency.QuadPart));
    return 0;
}
