// The registry by whole paths, for those who set up a machine and look at it.
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {
namespace {

constexpr UINT kAnsi = 1252;

WideRegistryValue wideCopyOf(const RegistryValueNode& node) {
    return {wideFromStored(node.name()), node.type(), std::string(GivenData::asWindows(node).view())};
}

RegistryValue ansiCopyOf(const RegistryValueNode& node) {
    return {ansiFromStored(node.name()), node.type(), std::string(GivenData::asAnsi(node, kAnsi).view())};
}

std::string bytesOf(DWORD number) {
    std::string data;
    for (int shift = 0; shift < 32; shift += 8) data += static_cast<char>(number >> shift & 0xFF);
    return data;
}

}  // namespace

RegistryKey* Registry::keyAt(std::u16string_view path) const {
    return findPath(known(storedFromWide(path)));
}

const RegistryValueNode* Registry::nodeAt(std::u16string_view path, std::u16string_view name) const {
    const RegistryKey* key = keyAt(path);
    return key == nullptr ? nullptr : tree_.value(key, known(storedFromWide(name)));
}

bool Registry::put(std::u16string_view path, std::u16string_view name, DWORD type, const StoredData& data) {
    if (name.size() > kLongestValueName) return false;
    RegistryKey* key = makePath(storedFromWide(path));
    if (key != nullptr) setValue(key, storedFromWide(name), type, data.view());
    return key != nullptr;
}

bool Registry::setDenied(std::u16string_view path, bool denied) {
    RegistryKey* key = keyAt(path);
    if (key != nullptr) key->denied = denied;
    return key != nullptr;
}

// By real names -----------------------------------------------------------------------------------

bool Registry::deny(std::u16string_view path) {
    return setDenied(path, true);
}

bool Registry::allow(std::u16string_view path) {
    return setDenied(path, false);
}

bool Registry::exists(std::u16string_view path) const {
    return keyAt(path) != nullptr;
}

bool Registry::createKey(std::u16string_view path) {
    return makePath(storedFromWide(path)) != nullptr;
}

bool Registry::deleteKey(std::u16string_view path) {
    RegistryKey* key = keyAt(path);
    if (key == nullptr || isRoot(key)) return false;
    tree_.remove(key);
    return true;
}

bool Registry::setValue(std::u16string_view path, std::u16string_view name, DWORD type,
                        std::string_view bytes) {
    return put(path, name, type, StoredData::fromWindows(type, bytes));
}

bool Registry::setText(std::u16string_view path, std::u16string_view name, std::u16string_view text) {
    return put(path, name, REG_SZ, StoredData::fromText(storedFromWide(text) + '\0'));
}

bool Registry::setNumber(std::u16string_view path, std::u16string_view name, DWORD number) {
    return setValue(path, name, REG_DWORD, bytesOf(number));
}

bool Registry::deleteValue(std::u16string_view path, std::u16string_view name) {
    RegistryKey* key = keyAt(path);
    return key != nullptr && tree_.removeValue(key, known(storedFromWide(name)));
}

std::optional<WideRegistryValue> Registry::wideValue(std::u16string_view path,
                                                     std::u16string_view name) const {
    const RegistryValueNode* node = nodeAt(path, name);
    return node != nullptr ? std::optional(wideCopyOf(*node)) : std::nullopt;
}

std::vector<WideRegistryValue> Registry::wideValues(std::u16string_view path) const {
    std::vector<WideRegistryValue> result;
    const RegistryKey* key = keyAt(path);
    for (std::size_t i = 0; key != nullptr && i < key->valueCount(); ++i)
        result.push_back(wideCopyOf(key->value(i)));
    return result;
}

std::vector<std::u16string> Registry::wideSubKeys(std::u16string_view path) const {
    std::vector<std::u16string> result;
    RegistryKey* key = keyAt(path);
    for (std::size_t i = 0; key != nullptr && i < key->subKeyCount(); ++i)
        result.push_back(wideFromStored(tree_.subKey(key, i)->name()));
    return result;
}

// In Windows-1252 ---------------------------------------------------------------------------------

bool Registry::deny(std::string_view path) {
    return deny(utf16FromAnsi(path));
}

bool Registry::allow(std::string_view path) {
    return allow(utf16FromAnsi(path));
}

bool Registry::exists(std::string_view path) const {
    return exists(utf16FromAnsi(path));
}

bool Registry::createKey(std::string_view path) {
    return createKey(utf16FromAnsi(path));
}

bool Registry::deleteKey(std::string_view path) {
    return deleteKey(utf16FromAnsi(path));
}

bool Registry::setValue(std::string_view path, std::string_view name, DWORD type, std::string_view data) {
    return put(utf16FromAnsi(path), utf16FromAnsi(name), type, StoredData::fromAnsi(type, data, kAnsi));
}

bool Registry::setText(std::string_view path, std::string_view name, std::string_view text) {
    return setValue(path, name, REG_SZ, std::string(text) + '\0');
}

bool Registry::setNumber(std::string_view path, std::string_view name, DWORD number) {
    return setValue(path, name, REG_DWORD, bytesOf(number));
}

bool Registry::deleteValue(std::string_view path, std::string_view name) {
    return deleteValue(utf16FromAnsi(path), utf16FromAnsi(name));
}

std::optional<RegistryValue> Registry::value(std::string_view path, std::string_view name) const {
    const RegistryValueNode* node = nodeAt(utf16FromAnsi(path), utf16FromAnsi(name));
    return node != nullptr ? std::optional(ansiCopyOf(*node)) : std::nullopt;
}

std::vector<RegistryValue> Registry::values(std::string_view path) const {
    std::vector<RegistryValue> result;
    const RegistryKey* key = keyAt(utf16FromAnsi(path));
    for (std::size_t i = 0; key != nullptr && i < key->valueCount(); ++i)
        result.push_back(ansiCopyOf(key->value(i)));
    return result;
}

std::vector<std::string> Registry::subKeys(std::string_view path) const {
    std::vector<std::string> result;
    for (const std::u16string& name : wideSubKeys(utf16FromAnsi(path))) result.push_back(ansiFromUtf16(name));
    return result;
}

}  // namespace bromvale::offline
