#include "platform/exact/dialog.h"

#include <array>
#include <cstring>

#include "platform/exact/text.h"
#include "platform/wide.h"

namespace bromvale {

std::string exactPathFromIdList(PCIDLIST_ABSOLUTE list) {
    if (wide() != nullptr) {
        std::array<char16_t, MAX_PATH + 1> path{};
        if (wide()->pathFromIdList(list, reinterpret_cast<WCHAR*>(path.data())) == 0) return {};
        return exactText(path.data());
    }
    std::array<char, MAX_PATH + 1> path{};
    if (SHGetPathFromIDListA(list, path.data()) == 0) return {};
    return path.data();
}

}  // namespace bromvale
