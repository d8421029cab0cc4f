// A 64-bit Windows has two system folders, and two keys for some names of the registry: what a program meets
// depends on its own width. A small model of that, off until a test asks for it.
//
// A program of 32 bits finds SysWOW64 under the name System32 (the folder itself below Sysnative), and below
// Wow6432Node what it takes for HKEY_LOCAL_MACHINE\Software and for the keys CLSID and Interface of the
// classes; the other classes and App Paths are shared. It is led away where a whole path from a hive is
// opened or made, not on the steps from one opened key to the next. Those who set up the machine (Drives,
// Registry) name everything where it really lies. That is Windows 7 and later; `classesApart` is what was
// before.
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

class OtherHalf {
  public:
    Halves seen = Halves::None;
    bool filesAreLedAway = true;  // off while the program asks for the other view
    // Before Windows 7 the classes as a whole and App Paths are other keys for a program of 32 bits.
    bool classesApart = false;
    std::string windows = "C:\\WINDOWS";  // the folder of Windows, in the stored form

    // Where a path of the program really leads.
    void lead(Location& location) const;

    // Whether a key that the program names lies elsewhere, and where. `hive` is the handle's number,
    // HKEY_LOCAL_MACHINE 2.
    [[nodiscard]] bool leadsAway(std::size_t hive, std::string_view path) const;
    [[nodiscard]] std::string realKey(std::size_t hive, std::string_view path) const;
};

// Sets the machine's; makes the second system folder, too.
void setHalves(Halves halves);

}  // namespace bromvale::offline

BOOL IsWow64Process(HANDLE process, BOOL* is);
BOOL Wow64DisableWow64FsRedirection(PVOID* old);
BOOL Wow64RevertWow64FsRedirection(PVOID old);
// 0 and ERROR_CALL_NOT_IMPLEMENTED on a 32-bit Windows.
UINT GetSystemWow64DirectoryA(LPSTR buffer, UINT size);
