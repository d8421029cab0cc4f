#pragma once
// The shell's list of items, as which it names a folder: apart from the folder dialog, since who only passes
// one on needs none of the shell's objects, which take longer to compile than most files here.
#ifdef _WIN32
struct _ITEMIDLIST;
using PCIDLIST_ABSOLUTE = const _ITEMIDLIST*;
#else
#include "platform/offline/desktop/shell_api.h"
#endif
