#include "tests/fuzz/program.h"

#include "core/state.h"
#include "platform/files.h"

namespace bromvale::fuzz {
namespace {

bool fillState() {
    AppTitle = "Bromvale";
    AppVersion = "1.1.0";
    AppPath = kProgramFolder;
    BackupPath = AppPath + "Backup\\";
    WinDir = "C:\\WINDOWS\\";
    SysDir = "C:\\WINDOWS\\SYSTEM32\\";
    OSName = "Windows XP";
    offline::machine().drives.makeFolder(std::string_view(kProgramFolder));
    SetCurrentDirectoryA(kProgramFolder);
    return true;
}

}  // namespace

offline::Machine& freshMachine() {
    static const bool filled = fillState();
    static_cast<void>(filled);
    offline::Machine& machine = offline::machine();
    machine.registry.clear();
    machine.events.clear();
    machine.answers.clear();
    machine.drives.erase(std::string_view("C:\\Programme\\Bromvale\\bromvale.log"));
    return machine;
}

}  // namespace bromvale::fuzz
