// What a process that scans tells the one that asked it to, through a pipe: numbers and texts, one after the
// other. The reader takes them as they come, so that no side holds the whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace bromvale::offline {

class WireWriter {
  public:
    explicit WireWriter(int pipe) : pipe_(pipe) {}

    void number(std::uint64_t number);
    void text(std::string_view text);
    void text(std::u16string_view text);
    // Ends this process where nobody reads any more.
    void flush();

  private:
    void put(std::string_view bytes);

    int pipe_;
    std::string waiting_;
};

// std::out_of_range where the pipe ends too early.
class WireReader {
  public:
    explicit WireReader(int pipe) : pipe_(pipe) {}

    std::uint64_t number();
    std::string text();
    std::u16string wide();

  private:
    void take(char* to, std::size_t size);
    void fill();

    int pipe_;
    std::string read_;
    std::size_t used_ = 0;  // of read_
};

}  // namespace bromvale::offline
