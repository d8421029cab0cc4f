#pragma once
// Rights of the user. From Windows Vista on an administrator's programs start without an administrator's
// rights, and the system may be asked for them. Before that, whoever is administrator has them.
#include <string>

#include "base/function_ref.h"

namespace bromvale {

// The user is an administrator, and this process runs without those rights. False where the system doesn't
// tell.
[[nodiscard]] bool couldHaveMoreRights();

// Has the system ask the user whether this program may be started anew with all rights of his: its own file,
// with the arguments and the current folder of this process. Shows nothing itself. False where the user
// declines or where it fails. After a start it comes back when `runs` says that the other one has got so far,
// when that has ended, or after ten seconds.
[[nodiscard]] bool startWithMoreRights(FunctionRef<bool()> runs);

// From Windows Vista on: keys below HKEY_LOCAL_MACHINE are closed to this process.
[[nodiscard]] bool lacksMachineRights();

// Makes a file in the folder, which ends in a backslash, and deletes it again: attributes and lists of rights
// don't tell all that may keep a program from it.
[[nodiscard]] bool takesFiles(const std::string& folder);

}  // namespace bromvale
