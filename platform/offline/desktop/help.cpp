#include "platform/help.h"

#include "platform/offline/machine.h"

namespace bromvale {

// Only what is asked for is recorded.
void setHelpFolder(std::string_view) {}

HWND HtmlHelpA(HWND, const char* file, unsigned command, std::uintptr_t) {
    if (offline::failsHere("HtmlHelpA")) return nullptr;
    offline::machine().events.record({offline::EventKind::Help, file != nullptr ? file : "", "", command});
    return nullptr;
}

}  // namespace bromvale
