// What a process that scans tells the one that asked it to: numbers and texts, one after the other.
#pragma once

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::offline {

class WireWriter {
  public:
    void number(std::uint64_t number) {
        bytes_.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
    void text(std::string_view text) {
        number(text.size());
        bytes_.append(text);
    }
    void text(std::u16string_view text) {
        this->text(std::string_view(reinterpret_cast<const char*>(text.data()), text.size() * 2));
    }
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

// Throws std::out_of_range where the other side has broken off.
class WireReader {
  public:
    explicit WireReader(std::string_view bytes) : rest_(bytes) {}

    std::uint64_t number() {
        std::uint64_t number = 0;
        std::memcpy(&number, take(sizeof number).data(), sizeof number);
        return number;
    }
    std::string text() { return std::string(take(number())); }
    std::u16string wide() {
        const std::string_view bytes = take(number());
        std::u16string text(bytes.size() / 2, u'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * 2);
        return text;
    }

  private:
    std::string_view take(std::uint64_t size) {
        if (size > rest_.size()) throw std::out_of_range("the answer is cut off");
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }
    std::string_view rest_;
};

}  // namespace bromvale::offline
