// The registry by whole paths, for those who set up a machine and look at it.
#include <algorithm>

#include "platform/offline/files/other_half.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {
namespace {

constexpr UINT kAnsi = 1252;

WideRegistryValue wideCopyOf(const RegistryValueNode& node) {
    return {wideFromStored(node.name()), node.type(), std::string(windowsData(node).view())};
}

RegistryValue ansiCopyOf(const RegistryValueNode& node) {
    return {ansiFromStored(node.name()), node.type(), std::string(ansiData(node, kAnsi).view())};
}

std::string bytesOf(DWORD number) {
    std::string data;
    for (int shift = 0; shift < 32; shift += 8) data += static_cast<char>(number >> shift & 0xFF);
    return data;
}

}  // namespace

const RegistryValueNode* Registry::nodeAt(const WideText& path, const WideText& name) const {
    const RegistryKey* key = keyAt(path);
    return key == nullptr ? nullptr : tree_.value(key, known(storedFromWide(name.view())));
}

bool Registry::put(const WideText& path, const WideText& name, DWORD type, const StoredData& data) {
    if (name.view().size() > kLongestValueName) return false;
    RegistryKey* key = makeKeyAt(path);
    if (key != nullptr) setValue(key, storedFromWide(name.view()), type, data.view());
    return key != nullptr;
}

bool Registry::setDenied(const WideText& path, bool denied) {
    RegistryKey* key = keyAt(path);
    if (key != nullptr) key->denied = denied;
    return key != nullptr;
}

RegistryKey* Registry::seenAt(const WideText& path) const {
    const std::string stored = known(storedFromWide(path.view()));
    std::string_view rest = stored;
    const auto hive = hiveByName(nextPathName(rest));
    if (!hive) return nullptr;
    rest.remove_prefix(std::min(rest.find_first_not_of('\\'), rest.size()));
    return findBelow(*hive, otherHalf_.realKey(*hive, rest));
}

bool Registry::exists(const WideText& path) const {
    return keyAt(path) != nullptr;
}

bool Registry::createKey(const WideText& path) {
    return makeKeyAt(path) != nullptr;
}

bool Registry::deleteKey(const WideText& path) {
    RegistryKey* key = keyAt(path);
    if (key == nullptr || isRoot(key)) return false;
    tree_.remove(key);
    return true;
}

bool Registry::setValue(std::u16string_view path, std::u16string_view name, DWORD type,
                        std::string_view bytes) {
    return put(path, name, type, StoredData::fromWindows(type, bytes));
}

bool Registry::setText(const WideText& path, const WideText& name, const WideText& text) {
    return put(path, name, REG_SZ, StoredData::fromText(storedFromWide(text.view()) + '\0'));
}

bool Registry::setNumber(const WideText& path, const WideText& name, DWORD number) {
    return setValue(path.view(), name.view(), REG_DWORD, bytesOf(number));
}

bool Registry::deleteValue(const WideText& path, const WideText& name) {
    RegistryKey* key = keyAt(path);
    return key != nullptr && tree_.removeValue(key, known(storedFromWide(name.view())));
}

std::optional<WideRegistryValue> Registry::wideValue(const WideText& path, const WideText& name) const {
    const RegistryValueNode* node = nodeAt(path, name);
    return node != nullptr ? std::optional(wideCopyOf(*node)) : std::nullopt;
}

std::vector<WideRegistryValue> Registry::wideValues(const WideText& path) const {
    std::vector<WideRegistryValue> result;
    const RegistryKey* key = keyAt(path);
    for (std::size_t i = 0; key != nullptr && i < key->valueCount(); ++i)
        result.push_back(wideCopyOf(key->value(i)));
    return result;
}

std::vector<std::u16string> Registry::wideSubKeys(const WideText& path) const {
    std::vector<std::u16string> result;
    RegistryKey* key = keyAt(path);
    for (std::size_t i = 0; key != nullptr && i < key->subKeyCount(); ++i)
        result.push_back(wideFromStored(tree_.subKey(key, i)->name()));
    return result;
}

bool Registry::setValue(std::string_view path, std::string_view name, DWORD type, std::string_view data) {
    return put(path, name, type, StoredData::fromAnsi(type, data, kAnsi));
}

std::optional<RegistryValue> Registry::value(const WideText& path, const WideText& name) const {
    const RegistryValueNode* node = nodeAt(path, name);
    return node != nullptr ? std::optional(ansiCopyOf(*node)) : std::nullopt;
}

std::vector<RegistryValue> Registry::values(const WideText& path) const {
    std::vector<RegistryValue> result;
    const RegistryKey* key = keyAt(path);
    for (std::size_t i = 0; key != nullptr && i < key->valueCount(); ++i)
        result.push_back(ansiCopyOf(key->value(i)));
    return result;
}

std::vector<std::string> Registry::subKeys(const WideText& path) const {
    std::vector<std::string> result;
    for (const std::u16string& name : wideSubKeys(path)) result.push_back(ansiFromUtf16(name));
    return result;
}

}  // namespace bromvale::offline
