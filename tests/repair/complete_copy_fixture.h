#pragma once
#include "repair/complete_copy.h"
#include "tests/repair/removal_fixture.h"
#include "tests/support/utf16_bytes.h"

namespace bromvale::testing {

inline constexpr const char* kA = "Software\\Probe\\A";

class CompleteCopyTest : public RemovalTest {
  protected:
    const std::string head = "\xFF\xFE" + wide(u"Windows Registry Editor Version 5.00\r\n");
};

}  // namespace bromvale::testing
