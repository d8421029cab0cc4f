#pragma once
#include <cstdint>

namespace bromvale {

// value * numerator / denominator to the nearest whole number, halves away from zero, as the system's own
// MulDiv. The denominator is positive and the result fits.
[[nodiscard]] constexpr int mulDiv(int value, int numerator, int denominator) {
    const std::int64_t product = std::int64_t{value} * numerator;
    const std::int64_t half = denominator / 2;
    return static_cast<int>((product >= 0 ? product + half : product - half) / denominator);
}

// The way between lengths that don't depend on a screen and the pixels of one with so many dots an inch (96
// at 100 %). Pixels come back from twips as they were, as long as a pixel is a twip at least.
class Scale {
  public:
    static constexpr int kDesignDpi = 96;
    static constexpr int kTwipsPerInch = 1440;

    constexpr explicit Scale(int dpi) : dpi_(dpi > 0 ? dpi : kDesignDpi) {}
    [[nodiscard]] constexpr int dpi() const { return dpi_; }
    [[nodiscard]] constexpr int pixels(int twips) const { return mulDiv(twips, dpi_, kTwipsPerInch); }
    [[nodiscard]] constexpr int twips(int length) const { return mulDiv(length, kTwipsPerInch, dpi_); }
    // Pixels at 96 DPI as pixels of this screen.
    [[nodiscard]] constexpr int scaled(int length) const { return mulDiv(length, dpi_, kDesignDpi); }
    // So many pixels in twips: the known ones while they stand for just these pixels. A length that nobody
    // changes stays what it is through all scalings.
    [[nodiscard]] constexpr int twipsLike(int known, int length) const {
        return pixels(known) == length ? known : twips(length);
    }
    bool operator==(const Scale&) const = default;

  private:
    int dpi_;
};

}  // namespace bromvale
