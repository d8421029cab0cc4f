// What base/ asks of the system, once for both providers.
#include "base/system.h"

#include <array>

#include "platform/machine.h"

namespace bromvale {

unsigned systemCodePage() {
    return GetACP();
}

char systemUpperCase(char c) {
    CharUpperBuffA(&c, 1);
    return c;
}

char systemLowerCase(char c) {
    CharLowerBuffA(&c, 1);
    return c;
}

std::string localeText(LocaleText which) {
    static constexpr std::array<LCTYPE, 3> kTypes{LOCALE_SDECIMAL, LOCALE_STHOUSAND, LOCALE_SCURRENCY};
    std::array<char, 8> text{};
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, kTypes[static_cast<std::size_t>(which)],
                                      text.data(), static_cast<int>(text.size()));
    return length > 1 ? text.data() : "";
}

}  // namespace bromvale
