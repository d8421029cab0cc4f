#pragma once
// The shell's objects: apart from windows.h, since few files need them and they bring a lot with them.
#include "platform/win32/system/windows.h"

#define interface struct
#include <shlobj.h>
#undef interface
