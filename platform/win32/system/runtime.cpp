#include "platform/win32/system/runtime.h"

#include <iterator>

#include "platform/win32/system/libraries.h"

// The import symbols of the three wide functions that the runtime uses. On Windows 98 they exist and always
// fail.
#ifdef _WIN64
#define BROMVALE_DIRECT(name, bytes) asm(#name)
#define BROMVALE_IMPORT(name, bytes) asm("__imp_" #name)
#else
#define BROMVALE_DIRECT(name, bytes) asm("_" #name "@" #bytes)
#define BROMVALE_IMPORT(name, bytes) asm("__imp__" #name "@" #bytes)
#endif

namespace {

struct AnsiName {
    explicit AnsiName(const wchar_t* wide) {
        if (wide != nullptr) {
            WideCharToMultiByte(CP_ACP, 0, wide, -1, text, static_cast<int>(std::size(text)) - 1, nullptr,
                                nullptr);
        }
    }
    char text[MAX_PATH + 1] = {};
};

}  // namespace

extern "C" {

HANDLE WINAPI bromvaleCreateSemaphore(LPSECURITY_ATTRIBUTES, LONG, LONG, const wchar_t*)
    BROMVALE_DIRECT(CreateSemaphoreW, 16);
HMODULE WINAPI bromvaleGetModuleHandle(const wchar_t*) BROMVALE_DIRECT(GetModuleHandleW, 4);
HMODULE WINAPI bromvaleLoadLibrary(const wchar_t*) BROMVALE_DIRECT(LoadLibraryW, 4);

// The runtime's semaphores have no names.
HANDLE WINAPI bromvaleCreateSemaphore(LPSECURITY_ATTRIBUTES security, LONG count, LONG maximum,
                                      const wchar_t*) {
    return CreateSemaphoreA(security, count, maximum, nullptr);
}

HMODULE WINAPI bromvaleGetModuleHandle(const wchar_t* name) {
    return GetModuleHandleA(name != nullptr ? AnsiName(name).text : nullptr);
}

// The runtime asks for libraries of the system alone, by their bare names.
HMODULE WINAPI bromvaleLoadLibrary(const wchar_t* name) {
    return bromvale::loadSystemLibrary(AnsiName(name).text);
}

extern const void* const bromvaleImportOfCreateSemaphore BROMVALE_IMPORT(CreateSemaphoreW, 16);
extern const void* const bromvaleImportOfGetModuleHandle BROMVALE_IMPORT(GetModuleHandleW, 4);
extern const void* const bromvaleImportOfLoadLibrary BROMVALE_IMPORT(LoadLibraryW, 4);

const void* const bromvaleImportOfCreateSemaphore = reinterpret_cast<const void*>(&bromvaleCreateSemaphore);
const void* const bromvaleImportOfGetModuleHandle = reinterpret_cast<const void*>(&bromvaleGetModuleHandle);
const void* const bromvaleImportOfLoadLibrary = reinterpret_cast<const void*>(&bromvaleLoadLibrary);

}  // extern "C"

namespace bromvale {

void bindOldSystems() {}

void silenceDrives() {
    // What the process came with stays: whoever started it may have switched other boxes off.
    const UINT before = SetErrorMode(0);
    SetErrorMode(before | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

void useDoublePrecision() {
#ifdef __i386__
    // No exception is raised, 53 bits, to the nearest and half to even.
    constexpr unsigned short kDoublePrecision = 0x027F;
    asm volatile("fninit\n\tfldcw %0" : : "m"(kDoublePrecision));
#endif
}

}  // namespace bromvale

#ifdef __i386__
// The start-up code of every program calls this by its first name, and the linker takes it from here before
// it looks into MinGW's own library, whose function chooses 80 bits. Both names stand together there.
extern "C" {
void _fpreset();
void fpreset();
void _fpreset() {
    bromvale::useDoublePrecision();
}
void fpreset() {
    bromvale::useDoublePrecision();
}
}
#endif
