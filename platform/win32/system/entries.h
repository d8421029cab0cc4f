#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// Finds a function that not every system has. False, and null, where the library or the function is missing.
template <class Entry>
bool loadEntry(HMODULE library, const char* name, Entry& entry) {
    const FARPROC found = library != nullptr ? GetProcAddress(library, name) : nullptr;
    entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(found));
    return entry != nullptr;
}

}  // namespace bromvale
