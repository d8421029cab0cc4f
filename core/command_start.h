#pragma once
#include <string_view>

namespace bromvale {

// Starts a command line held as one text and doesn't wait. It is taken apart as the system does it: a program
// in quotes, or up to a blank behind which the first text names a program ("C:\Programme\Ein Name\weg.exe
// /still"), ".exe" added where the name has no extension; what follows are the program's switches. Variables
// between percent signs are replaced first, as registry texts may hold them. `showState` is the window state
// that the program is asked to open in: 1 normal with focus. A program that wants more rights than the user
// has is handed to the shell, which asks for them.
//
// Failure 53: the program's file isn't found. 5: the line is empty, or the file is no program. 70: no access,
// 7: out of memory, 52: no file can have this name, 71: the drive holds no medium, 76: the network path can't
// be reached.
void startCommand(std::string_view commandLine, int showState);

}  // namespace bromvale
