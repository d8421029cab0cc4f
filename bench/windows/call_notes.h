#pragma once
#include <string_view>

#include "bench/windows/call_record.h"
#include "platform/win32/system/windows.h"

// What the recorder's functions write down with. Nothing is written before startRecording and after
// stopRecording; calls of several threads are written one after the other.
namespace bench {

void put(Record record, std::string_view text = {});
void putWide(Record record, LPCWSTR text);

// Numbers for what was opened, from 1 on in the order of the records; 0 for what is not known.
[[nodiscard]] std::int32_t keyNumber(HKEY key);
[[nodiscard]] std::int32_t fileNumber(HANDLE file);
// Of the record that was put last. Failed openings have a number, too.
void opened(HKEY key, bool succeeded);
void opened(HANDLE file);

// Takes the place of a function that the program asks for by name; `found` is what the system answered.
[[nodiscard]] FARPROC recorderOf(LPCSTR name, FARPROC found);

template <class Function>
Function functionOf(FARPROC address) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

}  // namespace bench

// The linker has calls of an imported function go through __wrap___imp_NAME, which is defined below as a
// pointer to `recorder`.
#define REAL(name) __real___imp_##name
#define RECORDED(name, recorder)                      \
    extern "C" decltype(&::name) __real___imp_##name; \
    extern "C" decltype(&::name) __wrap___imp_##name; \
    decltype(&::name) __wrap___imp_##name = recorder
