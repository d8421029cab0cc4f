// Registers a class and takes it back, as a component's library does.
#include <windows.h>

static const char* const kClass = "Software\\Classes\\CLSID\\{71A27032-C7D8-11D2-BEF8-525400DFB47A}";

extern "C" HRESULT WINAPI DllRegisterServer() {
    static const char name[] = "Registriert";
    return HRESULT_FROM_WIN32(static_cast<DWORD>(
        RegSetValueA(HKEY_LOCAL_MACHINE, kClass, REG_SZ, name, static_cast<DWORD>(sizeof name - 1))));
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, kClass);
    return S_FALSE;
}
