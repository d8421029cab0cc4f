#pragma once
// What the two providers do differently for the tests' machine.
#include "tests/support/test_machine.h"

namespace bromvale::testing {

// Hives without content of their own, boxes recorded and answered; returns the test's folder with its
// backslash.
[[nodiscard]] std::string beginTest();
// Takes everything back, the folder included.
void endTest(const std::string& folder);

void answerNextBox(int id);
[[nodiscard]] const std::vector<ShownBox>& shownBoxes();

}  // namespace bromvale::testing
