#pragma once
#include <array>
#include <cstring>
#include <string>
#include <string_view>

namespace bromvale {

// A text with a NUL behind it, as the platform's functions want it. Short ones, which is nearly all of them,
// need no memory of their own: this stands in the middle of the scan.
class CText {
  public:
    explicit CText(std::string_view text) {
        if (text.size() < short_.size()) {
            std::memcpy(short_.data(), text.data(), text.size());
            short_[text.size()] = '\0';
            text_ = short_.data();
        } else {
            long_ = text;
            text_ = long_.c_str();
        }
    }
    CText(const CText&) = delete;
    CText& operator=(const CText&) = delete;

    [[nodiscard]] const char* get() const { return text_; }

  private:
    std::array<char, 512> short_;
    std::string long_;
    const char* text_;
};

}  // namespace bromvale
