// A library that is no component.
#include <windows.h>

extern "C" int WINAPI DoesSomethingElse() {
    return 1;
}
