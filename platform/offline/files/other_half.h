// A 64-bit Windows has two system folders, and two keys for some names of the registry: what a program meets
// depends on its own width. A small model of that, off until a test asks for it.
//
// A program of 32 bits finds SysWOW64 under the name System32 (the folder itself below Sysnative), and below
// Wow6432Node what it takes for HKEY_LOCAL_MACHINE\Software and for the keys CLSID and Interface of the
// classes; the other classes and App Paths are shared. It is led away where a whole path from a hive is
// opened or made, not on the steps from one opened key to the next. Those who set up the machine (Drives,
// Registry) name everything where it really lies.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

struct Location;

enum class Halves {
    None,      // a 32-bit Windows
    SeenBy32,  // a 64-bit one, and the program has 32 bits
    SeenBy64,
};
// Makes the second system folder, too.
void setHalves(Halves halves);
[[nodiscard]] Halves halves();

// Where a path of the program really leads.
void followRedirection(Location& location);

// Where a key that the program names really lies. `hive` is the handle's number, HKEY_LOCAL_MACHINE 2.
[[nodiscard]] bool isRedirected(std::size_t hive, std::string_view path);
[[nodiscard]] std::string redirectedKey(std::size_t hive, std::string_view path);

}  // namespace bromvale::offline

BOOL IsWow64Process(HANDLE process, BOOL* is);
BOOL Wow64DisableWow64FsRedirection(PVOID* old);
BOOL Wow64RevertWow64FsRedirection(PVOID old);
// 0 and ERROR_CALL_NOT_IMPLEMENTED on a 32-bit Windows.
UINT GetSystemWow64DirectoryA(LPSTR buffer, UINT size);
