#pragma once
#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace bromvale {

// A vector whose free places are one gap, which goes to where an element is taken out. Taking elements out
// one after another from front to back is so linear in all of them together, where a vector moves up all that
// is behind each of them. Taking out asks for no memory.
template <class T>
class GapVector {
  public:
    [[nodiscard]] std::size_t size() const { return slots_.size() - width_; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] T& operator[](std::size_t at) { return slots_[at < gap_ ? at : at + width_]; }
    [[nodiscard]] const T& operator[](std::size_t at) const { return slots_[at < gap_ ? at : at + width_]; }

    void erase(std::size_t at) {
        moveGap(at);
        ++width_;
        slots_[gap_ + width_ - 1] = T();
    }

    void clear() {
        slots_.clear();
        gap_ = width_ = 0;
    }

    // All elements without the gap, to look at in their order, to add to and to sort.
    [[nodiscard]] std::vector<T>& closed() {
        moveGap(size());
        slots_.resize(size());
        width_ = 0;
        return slots_;
    }

  private:
    void moveGap(std::size_t to) {
        const auto place = [this](std::size_t at) {
            return slots_.begin() + static_cast<std::ptrdiff_t>(at);
        };
        if (width_ != 0 && to < gap_) std::move_backward(place(to), place(gap_), place(gap_ + width_));
        if (width_ != 0 && to > gap_) std::move(place(gap_ + width_), place(to + width_), place(gap_));
        gap_ = to;
    }

    std::vector<T> slots_;
    std::size_t gap_ = 0;
    std::size_t width_ = 0;
};

}  // namespace bromvale
