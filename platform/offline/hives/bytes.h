// The bytes of a hive, a log or a part of one. Every number and every text that is taken out of a file of the
// registry is taken here, where the bounds are checked: a damaged file is an exception and never a read past
// its end.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace bromvale::offline {

// Something in the file can't be. `place` is the byte of the file, or of the part of it that was looked at.
class HiveDamage : public std::runtime_error {
  public:
    HiveDamage(std::size_t place, const std::string& what) : std::runtime_error(what), place(place) {}
    std::size_t place;
};

class HiveBytes {
  public:
    HiveBytes() = default;
    explicit HiveBytes(std::string_view bytes, std::size_t place = 0) : bytes_(bytes), place_(place) {}

    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    // Where these bytes begin in the file that they were cut from.
    [[nodiscard]] std::size_t place() const { return place_; }
    [[nodiscard]] std::string_view all() const { return bytes_; }

    [[nodiscard]] bool holds(std::size_t at, std::size_t size) const {
        return at <= bytes_.size() && size <= bytes_.size() - at;
    }
    [[nodiscard]] std::string_view text(std::size_t at, std::size_t size) const {
        if (!holds(at, size))
            throw HiveDamage(place_ + at, "the file ends, or its cell does, before what it is said to hold");
        return bytes_.substr(at, size);
    }
    [[nodiscard]] HiveBytes part(std::size_t at, std::size_t size) const {
        return HiveBytes(text(at, size), place_ + at);
    }
    // Little-endian.
    template <class Number>
    [[nodiscard]] Number number(std::size_t at) const {
        static_assert(std::endian::native == std::endian::little);
        Number number{};
        std::memcpy(&number, text(at, sizeof number).data(), sizeof number);
        return number;
    }
    [[nodiscard]] std::uint16_t u16(std::size_t at) const { return number<std::uint16_t>(at); }
    [[nodiscard]] std::uint32_t u32(std::size_t at) const { return number<std::uint32_t>(at); }
    [[nodiscard]] std::uint64_t u64(std::size_t at) const { return number<std::uint64_t>(at); }

  private:
    std::string_view bytes_;
    std::size_t place_ = 0;
};

}  // namespace bromvale::offline
