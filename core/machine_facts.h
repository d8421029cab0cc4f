#pragma once
#include <string>

namespace bromvale {

// Readers of machine facts. A failure is reported and leaves the text empty.
[[nodiscard]] std::string ReadComputerName();
[[nodiscard]] std::string ReadUserName();
// With marks where the code page lacks a character (platform/exact/text.h).
[[nodiscard]] std::string ReadWinDir();
[[nodiscard]] std::string ReadSysDir();
[[nodiscard]] std::string ReadTmpDir();
// Fills OSName, OSBuild and RegFileHeader.
void OS();

}  // namespace bromvale
