// A registry of Windows 9x once it is read, and on its way into a machine's registry.
#include <algorithm>

#include "platform/offline/hives/disk/creg.h"
#include "platform/offline/hives/hive_values.h"
#include "platform/offline/registry/data.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {
namespace {

std::string bytesOf(std::u16string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

// As Windows 9x's functions give it, in the form in which the registry takes it: texts in UTF-16LE.
std::string windowsData(const CregValue& value, UINT codePage) {
    if (!isText(value.type)) return value.data;
    std::string ansi = value.data;
    if (value.type == REG_SZ && !ansi.ends_with('\0')) ansi += '\0';
    return bytesOf(wideFromAnsi(ansi, codePage).text);
}

}  // namespace

const CregKey* CregKey::find(std::u16string_view path) const {
    const CregKey* key = this;
    while (key != nullptr && !path.empty()) {
        const std::u16string_view wanted = path.substr(0, path.find(u'\\'));
        path.remove_prefix(std::min(path.size(), wanted.size() + 1));
        const auto found = std::ranges::find_if(
            key->subKeys, [&](const CregKey& subKey) { return sameName(subKey.name, wanted); });
        key = found == key->subKeys.end() ? nullptr : &*found;
    }
    return key;
}

const CregValue* CregKey::value(std::u16string_view wanted) const {
    const auto found =
        std::ranges::find_if(values, [&](const CregValue& value) { return sameName(value.name, wanted); });
    return found == values.end() ? nullptr : &*found;
}

std::size_t addCreg(Registry& registry, const std::u16string& path, const CregKey& key, UINT codePage) {
    std::size_t left = 0;
    for (const CregValue& value : key.values)
        left += registry.setValue(path, value.name, value.type, windowsData(value, codePage)) ? 0 : 1;
    for (const CregKey& subKey : key.subKeys) {
        const std::u16string below = path + u"\\" + subKey.name;
        const bool fits = !subKey.name.empty() && subKey.name.find(u'\\') == std::u16string::npos;
        if (!fits || !registry.createKey(below)) {
            ++left;
        } else {
            left += addCreg(registry, below, subKey, codePage);
        }
    }
    return left;
}

}  // namespace bromvale::offline
