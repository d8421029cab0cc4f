#include "base/editor_key_path.h"

#include <algorithm>
#include <array>

namespace bromvale {
namespace {

struct Root {
    std::u16string_view system;
    std::u16string_view editor;
};

constexpr std::array kRoots{
    Root{u"\\REGISTRY\\MACHINE\\", u"HKEY_LOCAL_MACHINE\\"},
    Root{u"\\REGISTRY\\USER\\", u"HKEY_USERS\\"},
};

char16_t upperAscii(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
}

bool beginsWith(std::u16string_view text, std::u16string_view root) {
    return text.size() > root.size() &&
           std::equal(root.begin(), root.end(), text.begin(),
                      [](char16_t left, char16_t right) { return left == upperAscii(right); });
}

}  // namespace

std::optional<std::u16string> editorKeyPath(std::u16string_view systemPath) {
    for (const Root& root : kRoots) {
        if (beginsWith(systemPath, root.system))
            return std::u16string(root.editor).append(systemPath.substr(root.system.size()));
    }
    return std::nullopt;
}

}  // namespace bromvale
