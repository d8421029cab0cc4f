// Upper case of UTF-16 units as Windows' file systems and its registry see it: one unit stays one unit, and
// what has no single counterpart (ß, the dotless i) stays as it is.
#pragma once

namespace bromvale::offline {

[[nodiscard]] char16_t upperBeyondAscii(char16_t unit);

[[nodiscard]] inline char16_t upperUnit(char16_t unit) {
    if (unit >= 0x80) return upperBeyondAscii(unit);
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
}

}  // namespace bromvale::offline
