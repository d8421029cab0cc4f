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
// Blanks before the line don't count. A program below System32 that isn't found may be there in the other
// view of a 64-bit Windows (platform/exact/other_view.h), and is started from there.
//
// Failure 53: the program's file is surely not there. 5: the line is empty, or the file is no program. 70: no
// access, 7: out of memory, 52: no file can have this name, or the code page lacks one of its characters, 71:
// the drive isn't there or holds no medium, 76: the network path can't be reached.
void startCommand(std::string_view commandLine, int showState);

// Whether the code page has all of the line as it would be started (platform/exact/text.h).
[[nodiscard]] bool isExactCommand(std::string_view commandLine);

}  // namespace bromvale
