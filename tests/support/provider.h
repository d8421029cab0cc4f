#pragma once
// What the two providers do differently for the tests' machine.
#include "tests/support/test_machine.h"

namespace bromvale::testing {

// Hives without content of their own, boxes recorded and answered; returns the test's folder with its
// backslash.
[[nodiscard]] std::string beginTest();
// Takes everything back, the folder included.
void endTest(const std::string& folder);

// Past the code page; all tell whether it worked. The hives of the tests' machine.
bool makeTrueKey(HKEY hive, std::u16string_view path);
bool setTrueString(HKEY hive, std::u16string_view path, std::u16string_view name, std::u16string_view text);
[[nodiscard]] bool trueKeyExists(HKEY hive, std::u16string_view path);
bool writeTrueFile(const std::u16string& path, std::string_view bytes);
bool makeTrueFolder(const std::u16string& path);
[[nodiscard]] bool trueFileExists(const std::u16string& path);

void answerNextBox(int id);
[[nodiscard]] const std::vector<ShownBox>& shownBoxes();

}  // namespace bromvale::testing
