#pragma once
#include <algorithm>
#include <array>
#include <string_view>

#include "platform/registry.h"

namespace bromvale {

// Goes through the values of an open key with two buffers of 255 bytes, filled with blanks before each value.
// A value that doesn't fit, or can't be read otherwise, counts as one too: its name and text are what the
// call left in the buffers.
class ValueReader {
  public:
    explicit ValueReader(HKEY key) : key_(key) {}

    // False behind the last value.
    [[nodiscard]] bool next() {
        name_.fill(' ');
        data_.fill(' ');
        nameLength_ = dataLength_ = static_cast<DWORD>(name_.size());
        const LONG result = RegEnumValueA(key_, index_++, name_.data(), &nameLength_, nullptr, nullptr,
                                          reinterpret_cast<BYTE*>(data_.data()), &dataLength_);
        unread_ = result == ERROR_SUCCESS ? 0 : unread_ + 1;
        return result != ERROR_NO_MORE_ITEMS && unread_ < kGiveUp;
    }

    [[nodiscard]] std::string_view name() const { return left(name_, nameLength_); }
    // The reported length counts the terminator, so it is one less.
    [[nodiscard]] std::string_view text() const {
        return left(data_, dataLength_ == 0 ? 0 : dataLength_ - 1);
    }
    [[nodiscard]] DWORD dataLength() const { return dataLength_; }

  private:
    using Buffer = std::array<char, 255>;
    // A key that gives nothing but failures, as one that is deleted meanwhile, never says that it is at its
    // end.
    static constexpr int kGiveUp = 4096;

    static std::string_view left(const Buffer& buffer, DWORD length) {
        return {buffer.data(), std::min<std::size_t>(length, buffer.size())};
    }

    HKEY key_;
    DWORD index_ = 0;
    int unread_ = 0;
    DWORD nameLength_ = 0;
    DWORD dataLength_ = 0;
    Buffer name_;
    Buffer data_;
};

}  // namespace bromvale
