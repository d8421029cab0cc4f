#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bromvale {

// Text files by number, as the routines use them: take the next free number, open, work, close. A number that
// was not closed stays open until the process ends. Bytes are written to the operating system before a call
// returns and thus survive the end of the process at any later moment.

enum class FileMode { Input, Output, Append };

// The lowest number that isn't open, from 1; Failure 67 is never reached, Failure 55 for a number in use.
[[nodiscard]] int freeFile();
// Input: Failure 53 file missing, 76 folder missing, 75 or 70 no access. Output empties the file or makes it,
// Append makes it if it is absent. Failure 52 for a bad name (empty, or with wildcards).
void openFile(std::string_view path, FileMode mode, int number);
// One write of exactly these bytes; Failure 52 for a number that isn't open, 61 disk full, 57 other write
// failures.
void writeFile(int number, std::string_view bytes);
// The same for bytes that are of no use in part: where the write fails the file is cut back to what it was.
void writeWholeOrNothing(int number, std::string_view bytes);
// Nothing was ever written to it.
[[nodiscard]] bool isEmptyFile(int number);
// What a file begins with, and its size in bytes; nothing where there is none. Failures as for reading.
struct FileStart {
    std::string bytes;
    std::uint64_t size = 0;
};
[[nodiscard]] std::optional<FileStart> fileStart(std::string_view path, std::size_t count);
// The same as writeFile with CR LF behind it, still one write.
void writeLine(int number, std::string_view text);
[[nodiscard]] bool endOfFile(int number);
// Without its line end (CR, LF or CR LF); Failure 62 behind the end.
[[nodiscard]] std::string readLine(int number);
// Nothing happens for a number that isn't open.
void closeFile(int number);
[[nodiscard]] int openFileCount();

// Failure 75 where it exists already, 76 where its parent doesn't.
void makeFolder(std::string_view path);

}  // namespace bromvale
