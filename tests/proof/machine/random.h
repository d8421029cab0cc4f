#pragma once
#include <cstdint>
#include <initializer_list>
#include <iterator>

namespace bromvale::proof {

// The same numbers for the same seed on every system, which the library's distributions don't promise.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15u + 0x1234567u) {}

    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    // 0 to count - 1.
    int below(int count) { return static_cast<int>(next() % static_cast<std::uint64_t>(count)); }
    int from(int first, int last) { return first + below(last - first + 1); }
    bool percent(int chance) { return below(100) < chance; }

    template <class Things>
    const auto& oneOf(const Things& things) {
        return *std::next(std::begin(things), below(static_cast<int>(std::size(things))));
    }

  private:
    std::uint64_t state_;
};

}  // namespace bromvale::proof
