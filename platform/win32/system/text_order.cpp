#include "base/text_order.h"

#include "platform/win32/system/windows.h"

namespace bromvale {

int compareTexts(std::string_view a, std::string_view b) {
    const int result = CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.data(),
                                      static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
    // 0 is a failure, which no text of the code page gives; such rows count as equal.
    return result == 0 ? 0 : result - CSTR_EQUAL;
}

}  // namespace bromvale
