#pragma once
// Windows' own headers, in the form that the whole program uses. Macros that take names of ours are undone.
#include <windows.h>

#include <shellapi.h>

#undef small
#undef near
#undef far
#undef interface
