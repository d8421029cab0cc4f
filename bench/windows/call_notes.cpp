#include "bench/windows/call_notes.h"

#include <cstdio>
#include <cstring>
#include <map>

#include "bench/windows/call_recorder.h"

namespace bench {
namespace {

std::FILE* file = nullptr;
std::map<HKEY, std::int32_t> keys;
std::map<HANDLE, std::int32_t> files;
std::int32_t openedKeys = 0;
std::int32_t openedFiles = 0;

CRITICAL_SECTION& lock() {
    static CRITICAL_SECTION section = [] {
        CRITICAL_SECTION made;
        InitializeCriticalSection(&made);
        return made;
    }();
    return section;
}

class Locked {
  public:
    Locked() { EnterCriticalSection(&lock()); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked() { LeaveCriticalSection(&lock()); }
};

template <class Handle>
std::int32_t numberIn(const std::map<Handle, std::int32_t>& numbers, Handle handle) {
    const auto found = numbers.find(handle);
    return found == numbers.end() ? 0 : found->second;
}

}  // namespace

void put(Record record, std::string_view text) {
    const Locked locked;
    if (file == nullptr) return;
    record.length = static_cast<std::uint32_t>(text.size());
    std::fwrite(&record, sizeof record, 1, file);
    std::fwrite(text.data(), 1, text.size(), file);
}

void putWide(Record record, LPCWSTR text) {
    const std::size_t length = text != nullptr ? std::wcslen(text) : 0;
    put(record, {reinterpret_cast<const char*>(text), length * sizeof *text});
}

std::int32_t keyNumber(HKEY key) {
    const auto value = reinterpret_cast<std::intptr_t>(key);
    if (static_cast<std::int32_t>(value) < 0) return static_cast<std::int32_t>(value);
    const Locked locked;
    return numberIn(keys, key);
}

std::int32_t fileNumber(HANDLE handle) {
    const Locked locked;
    return numberIn(files, handle);
}

void opened(HKEY key, bool succeeded) {
    const Locked locked;
    if (file == nullptr) return;
    ++openedKeys;
    if (succeeded) keys[key] = openedKeys;
}

void opened(HANDLE handle) {
    const Locked locked;
    if (file == nullptr) return;
    ++openedFiles;
    if (handle != INVALID_HANDLE_VALUE) files[handle] = openedFiles;
}

}  // namespace bench

void startRecording() {
    bench::file = std::fopen(bench::kRecordFile, "wb");
}

void stopRecording() {
    const bench::Locked locked;
    if (bench::file != nullptr) std::fclose(bench::file);
    bench::file = nullptr;
}
