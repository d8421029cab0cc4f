// The arithmetic of scalings beside the system's own.
#include <gtest/gtest.h>

#include "base/scale.h"
#include "platform/win32/system/windows.h"

namespace bromvale::testing {
namespace {

TEST(ScaleBesideTheSystem, GivesWhatItsMulDivGives) {
    for (int dpi = 96; dpi <= 288; dpi += 12) {
        for (int value = -20000; value <= 20000; value += 7) {
            ASSERT_EQ(mulDiv(value, dpi, 1440), MulDiv(value, dpi, 1440)) << value << " " << dpi;
            ASSERT_EQ(mulDiv(value, 1440, dpi), MulDiv(value, 1440, dpi)) << value << " " << dpi;
        }
    }
}

}  // namespace
}  // namespace bromvale::testing
