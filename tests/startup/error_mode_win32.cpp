// The boxes of the system for drives without a disc.
#include "platform/win32/system/runtime.h"

#include <gtest/gtest.h>

#include "platform/win32/system/windows.h"

namespace bromvale::testing {
namespace {

UINT errorMode() {
    const UINT mode = SetErrorMode(0);
    SetErrorMode(mode);
    return mode;
}

TEST(ErrorMode, NoBoxComesForADriveWithoutADiscAndTheRestStays) {
    SetErrorMode(SEM_NOGPFAULTERRORBOX);
    silenceDrives();
    EXPECT_EQ(errorMode(),
              static_cast<UINT>(SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX));
}

}  // namespace
}  // namespace bromvale::testing
