// A library whose registration fails.
#include <windows.h>

extern "C" HRESULT WINAPI DllRegisterServer() {
    return E_ACCESSDENIED;
}
