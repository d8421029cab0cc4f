// The registry by real names and texts, for those who set up a machine and look at it.
#include "platform/offline/code_page.h"
#include "platform/offline/registry.h"
#include "platform/offline/registry_data.h"
#include "platform/offline/stored_text.h"

namespace bromvale::offline {
namespace {

WideRegistryValue copyOf(const RegistryValueNode& node) {
    return {wideFromStored(node.name()), node.type(), std::string(WideData(node).view())};
}

std::string bytesOf(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace

bool Registry::setDenied(std::u16string_view path, bool denied) {
    return setDenied(storedFromWide(path), denied);
}

bool Registry::exists(std::u16string_view path) const {
    return findPath(storedFromWide(path)) != nullptr;
}

bool Registry::createKey(std::u16string_view path) {
    return makePath(storedFromWide(path)) != nullptr;
}

bool Registry::deleteKey(std::u16string_view path) {
    return deleteKey(storedFromWide(path));
}

bool Registry::setValue(std::u16string_view path, std::u16string_view name, DWORD type,
                        std::string_view bytes) {
    return setValue(storedFromWide(path), storedFromWide(name), type,
                    isText(type) ? ansiFromUtf16Bytes(bytes) : std::string(bytes));
}

bool Registry::setText(std::u16string_view path, std::u16string_view name, std::u16string_view text) {
    return setValue(path, name, REG_SZ, bytesOf(text) + std::string(2, '\0'));
}

bool Registry::setNumber(std::u16string_view path, std::u16string_view name, DWORD number) {
    return setNumber(storedFromWide(path), storedFromWide(name), number);
}

bool Registry::deleteValue(std::u16string_view path, std::u16string_view name) {
    return deleteValue(storedFromWide(path), storedFromWide(name));
}

std::optional<WideRegistryValue> Registry::wideValue(std::u16string_view path,
                                                     std::u16string_view name) const {
    const RegistryKey* key = findPath(storedFromWide(path));
    const RegistryValueNode* node = key == nullptr ? nullptr : tree_.value(key, storedFromWide(name));
    if (node == nullptr) return std::nullopt;
    return copyOf(*node);
}

std::vector<WideRegistryValue> Registry::wideValues(std::u16string_view path) const {
    std::vector<WideRegistryValue> result;
    const RegistryKey* key = findPath(storedFromWide(path));
    for (std::size_t i = 0; key != nullptr && i < key->valueCount(); ++i)
        result.push_back(copyOf(key->value(i)));
    return result;
}

std::vector<std::u16string> Registry::wideSubKeys(std::u16string_view path) const {
    std::vector<std::u16string> result;
    RegistryKey* key = findPath(storedFromWide(path));
    for (std::size_t i = 0; key != nullptr && i < key->subKeyCount(); ++i)
        result.push_back(wideFromStored(tree_.subKey(key, i)->name()));
    return result;
}

}  // namespace bromvale::offline
