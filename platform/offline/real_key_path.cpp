#include "platform/real_key_path.h"

namespace bromvale {

// The machine's registry has one half, and its names are the true ones.
bool seesAnotherHalf() {
    return false;
}

std::optional<std::u16string> realKeyPath(HKEY) {
    return std::nullopt;
}

}  // namespace bromvale
