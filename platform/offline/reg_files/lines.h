// The physical lines of a registry file, in the stored form of stored_text.h, whatever the file is written
// in: UTF-16LE with mark or the machine's code page; CRLF, LF or bare CR. Only a window of the file is in
// memory.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::offline {

class RegFileLines {
  public:
    // Fills `to` with up to `size` bytes of the file and returns their number; fewer mean the end of the
    // file.
    using Read = std::function<std::size_t(char* to, std::size_t size)>;

    explicit RegFileLines(Read read);

    struct Line {
        std::string_view text;    // valid until the next call of next
        std::string_view ending;  // CRLF, LF, CR, or nothing at the end of a file
    };
    // False at the end of the file.
    bool next(Line& line);

    // Of the line that next gave last, from 1.
    [[nodiscard]] std::size_t number() const { return number_; }
    // The file is UTF-16 and ends within a character. Known when next has returned false.
    [[nodiscard]] bool endsWithinCharacter() const { return oddByte_; }

  private:
    bool refill();
    std::size_t decode(std::size_t bytes, char* to);
    const char* lineEnd();

    Read read_;
    std::vector<char> raw_;
    std::vector<char> text_;
    std::string converted_;  // the line that next gave, where it was not ASCII in a file that is not UTF-16
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    const char* searched_ = nullptr;  // no LF between at_ and here
    const char* lineFeed_ = nullptr;  // the next LF, when one is known
    std::size_t number_ = 0;
    bool started_ = false;
    bool wide_ = false;
    bool ended_ = false;
    bool oddByte_ = false;
};

}  // namespace bromvale::offline
