#pragma once
#include <string_view>

namespace bromvale {

// Starts a program without waiting for it. `showState` is the window state that it is asked to open in: 1
// normal with focus. Failure 53 where the program's file isn't found, 5 where it cannot be started.
void startCommand(std::string_view commandLine, int showState);

}  // namespace bromvale
