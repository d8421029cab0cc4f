#include <bit>
#include <cstring>

#include "platform/offline/hives/replay.h"

namespace bromvale::offline {
namespace {

// The seed is the number 0x82EF4D887A4E55C5, the low half first.
struct MarvinState {
    std::uint32_t low = 0x7A4E55C5u;
    std::uint32_t high = 0x82EF4D88u;

    void add(std::uint32_t word) {
        low += word;
        high ^= low;
        low = std::rotl(low, 20) + high;
        high = std::rotl(high, 9) ^ low;
        low = std::rotl(low, 27) + high;
        high = std::rotl(high, 19);
    }
};

}  // namespace

std::uint64_t marvin32(std::string_view bytes) {
    MarvinState state;
    std::uint32_t word = 0;
    for (; bytes.size() >= sizeof word; bytes.remove_prefix(sizeof word)) {
        std::memcpy(&word, bytes.data(), sizeof word);
        state.add(word);
    }
    // What is left, with a mark behind it.
    word = 0x80u << (8 * bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i)
        word |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    state.add(word);
    state.add(0);
    return std::uint64_t{state.high} << 32 | state.low;
}

}  // namespace bromvale::offline
