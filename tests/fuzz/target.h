// A fuzzing target: one function of the program that reads what others have written, and what must hold of it
// whatever it is given. The same targets run under libFuzzer (scripts/fuzz) and over the saved inputs
// (replay.cpp).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::fuzz {

struct Target {
    // That of its source in tests/fuzz/targets.
    const char* name;
    // Ends the process where something does not hold. What it leaves behind changes no later run.
    void (*run)(std::string_view input);
    // Well-formed inputs to begin with.
    std::vector<std::string> (*seeds)();
};

// Makes the target known: one object a target, at namespace scope.
class KnownTarget {
  public:
    explicit KnownTarget(const Target& target);
};

// All that are linked in; null where there is none of that name.
[[nodiscard]] const Target* targetNamed(std::string_view name);

// Ends the process (abort) and tells the place where it does not hold.
void require(bool holds, const char* what, const char* file = __builtin_FILE(), int line = __builtin_LINE());

// Takes an input apart, from its front. Behind its end everything is 0 or empty.
class Pieces {
  public:
    explicit Pieces(std::string_view input) : rest_(input) {}

    std::uint8_t byte() {
        const std::string_view taken = take(1);
        return taken.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(taken[0]);
    }
    std::size_t number() {
        const std::size_t low = byte();
        return low + 256 * std::size_t{byte()};
    }
    // Up to the sign, which is taken too.
    std::string_view until(std::string_view sign) {
        const std::size_t end = rest_.find(sign);
        const std::string_view taken = take(end);
        take(sign.size());
        return taken;
    }
    std::string_view take(std::size_t size) {
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    [[nodiscard]] std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

}  // namespace bromvale::fuzz
