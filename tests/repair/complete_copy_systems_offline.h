#pragma once
#include "platform/offline/machine.h"
#include "tests/repair/complete_copy_fixture.h"

namespace bromvale::testing {

inline constexpr const char* kPath = "HKEY_LOCAL_MACHINE\\Software\\Probe\\A";

// On any system, with its clock stopped.
class CompleteCopyOfflineTest : public CompleteCopyTest {
  protected:
    CompleteCopyOfflineTest() { offline::machine().clock.set(2026, 11, 15, 7, 12, 9); }

    static offline::Registry& registry() { return offline::machine().registry; }
    static void runOn(const char* system) { offline::machine().setOs(*offline::osByName(system)); }
    [[nodiscard]] std::size_t named() {
        std::size_t count = 0;
        for (const std::string& line : logLines()) count += line.find("wurde nicht entfernt") != line.npos;
        return count;
    }
};

}  // namespace bromvale::testing
