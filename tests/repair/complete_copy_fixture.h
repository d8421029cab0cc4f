#pragma once
#include "platform/offline/machine.h"
#include "repair/complete_copy.h"
#include "tests/repair/removal_fixture.h"

namespace bromvale::testing {

inline constexpr const char* kPath = "HKEY_LOCAL_MACHINE\\Software\\Probe\\A";
inline constexpr const char* kA = "Software\\Probe\\A";

inline std::string wide(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

class CompleteCopyOfflineTest : public RemovalTest {
  protected:
    CompleteCopyOfflineTest() { offline::machine().clock.set(2026, 11, 15, 7, 12, 9); }

    static offline::Registry& registry() { return offline::machine().registry; }
    static void runOn(const char* system) { offline::machine().setOs(*offline::osByName(system)); }
    const std::string head = "\xFF\xFE" + wide(u"Windows Registry Editor Version 5.00\r\n");
    [[nodiscard]] std::size_t named() {
        std::size_t count = 0;
        for (const std::string& line : logLines()) count += line.find("wurde nicht entfernt") != line.npos;
        return count;
    }
};

}  // namespace bromvale::testing
