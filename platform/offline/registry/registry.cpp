#include "platform/offline/registry/registry.h"

#include <algorithm>

#include "platform/offline/files/other_half.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {

namespace {

constexpr std::array<std::string_view, kHiveCount> kHiveNames = {
    "HKEY_CLASSES_ROOT",     "HKEY_CURRENT_USER",   "HKEY_LOCAL_MACHINE", "HKEY_USERS",
    "HKEY_PERFORMANCE_DATA", "HKEY_CURRENT_CONFIG", "HKEY_DYN_DATA"};
constexpr std::size_t kClassesRoot = 0;
constexpr std::size_t kCurrentUser = 1;
constexpr std::size_t kLocalMachine = 2;
constexpr std::string_view kClasses = "Software\\Classes";
constexpr std::uint32_t kFirstHive = 0x80000000u;

std::intptr_t numberOf(HKEY handle) {
    return reinterpret_cast<std::intptr_t>(handle);
}

std::optional<std::size_t> hiveOf(HKEY handle) {
    // The program keeps hives as 32-bit numbers, so both widenings of one count.
    const auto number = static_cast<std::uint32_t>(numberOf(handle));
    const bool widened = numberOf(handle) == static_cast<std::int32_t>(number) || numberOf(handle) == number;
    if (!widened || number < kFirstHive || number - kFirstHive >= kHiveCount) return std::nullopt;
    return number - kFirstHive;
}

}  // namespace

bool namesFit(std::string_view path) {
    if (path.size() <= kLongestKeyName) return true;
    for (auto name = nextPathName(path); !name.empty(); name = nextPathName(path)) {
        if (unitCount(name) > kLongestKeyName) return false;
    }
    return true;
}

std::optional<std::size_t> hiveByName(std::string_view name) {
    const auto found = std::find_if(kHiveNames.begin(), kHiveNames.end(),
                                    [&](std::string_view each) { return sameName(each, name); });
    if (found == kHiveNames.end()) return std::nullopt;
    return static_cast<std::size_t>(found - kHiveNames.begin());
}

std::string_view hiveName(std::size_t hive) {
    return kHiveNames[hive];
}

Registry::Registry(const OtherHalf& otherHalf) : otherHalf_(otherHalf) {
    makeRoots();
}
Registry::~Registry() {
    dropAll();
}

void Registry::makeRoots() {
    for (std::size_t hive = 0; hive < kHiveCount; ++hive) roots_[hive] = tree_.makeRoot(kHiveNames[hive]);
}

void Registry::dropAll() {
    handles_.each([this](const Opened& opened) { letGo(opened.key); });
    handles_ = {};
    for (RegistryKey* root : roots_) tree_.destroyRoot(root);
}

void Registry::clear() {
    dropAll();
    makeRoots();
}

// Handles ----------------------------------------------------------------------------------------

LONG Registry::resolve(HKEY handle, DWORD access, RegistryKey*& key) const {
    if (const auto hive = hiveOf(handle)) {
        key = hiveKey(*hive);
        return ERROR_SUCCESS;
    }
    const Opened* found = handles_.find(handle);
    if (found == nullptr) return ERROR_INVALID_HANDLE;
    if (found->key->deleted()) return ERROR_KEY_DELETED;
    if (ntFamily_ && (found->access & access) != access) return ERROR_ACCESS_DENIED;
    key = found->key;
    return ERROR_SUCCESS;
}

bool Registry::isHive(HKEY handle) {
    return hiveOf(handle).has_value();
}

HKEY Registry::open(RegistryKey* key, DWORD access) {
    ++key->openHandles;
    return handles_.open({key, access});
}

LONG Registry::close(HKEY handle) {
    if (isHive(handle)) return ERROR_SUCCESS;
    const Opened* found = handles_.find(handle);
    if (found == nullptr) return ERROR_INVALID_HANDLE;
    letGo(found->key);
    handles_.close(handle);
    return ERROR_SUCCESS;
}

void Registry::letGo(RegistryKey* key) {
    --key->openHandles;
    tree_.release(key);
}

// The hives and the view that HKEY_CLASSES_ROOT is -----------------------------------------------

bool Registry::isRoot(const RegistryKey* key) const {
    return std::find(roots_.begin(), roots_.end(), key) != roots_.end();
}

RegistryKey* Registry::hiveKey(std::size_t hive) const {
    if (hive != kClassesRoot) return roots_[hive];
    RegistryKey* classes = tree_.find(roots_[kLocalMachine], kClasses);
    return classes != nullptr ? classes : roots_[kClassesRoot];
}

// The user's own classes come before the machine's.
RegistryKey* Registry::findClass(std::string_view path) const {
    for (const std::size_t hive : {kCurrentUser, kLocalMachine}) {
        RegistryKey* classes = tree_.find(roots_[hive], kClasses);
        RegistryKey* key = classes == nullptr ? nullptr : tree_.find(classes, path);
        if (key != nullptr) return key;
    }
    return nullptr;
}

RegistryKey* Registry::findOrMakeClass(std::string_view path, bool& created) {
    created = false;
    path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
    if (RegistryKey* key = path.empty() ? nullptr : findClass(path)) return key;
    RegistryKey* classes = tree_.findOrMake(roots_[kLocalMachine], kClasses, created);
    return tree_.findOrMake(classes, path, created);
}

RegistryKey* Registry::find(HKEY handle, RegistryKey* key, std::string_view path) const {
    const auto hive = hiveOf(handle);
    if (hive && otherHalf_.leadsAway(*hive, path)) return tree_.find(key, otherHalf_.realKey(*hive, path));
    const bool view = hive == kClassesRoot && !path.empty();
    return view ? findClass(path) : tree_.find(key, path);
}

RegistryKey* Registry::findOrMake(HKEY handle, RegistryKey* key, std::string_view path, bool& created) {
    if (!namesFit(path)) return nullptr;
    const auto hive = hiveOf(handle);
    if (hive && otherHalf_.leadsAway(*hive, path)) {
        return tree_.findOrMake(key, otherHalf_.realKey(*hive, path), created);
    }
    if (hive == kClassesRoot) return findOrMakeClass(path, created);
    return tree_.findOrMake(key, path, created);
}

std::string Registry::known(std::string_view stored) const {
    return ntFamily_ ? std::string(stored) : withinCodePage(stored);
}

// By whole path ----------------------------------------------------------------------------------

RegistryKey* Registry::findBelow(std::size_t hive, std::string_view path) const {
    path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
    if (hive == kClassesRoot && !path.empty()) return findClass(path);
    return tree_.find(hiveKey(hive), path);
}

RegistryKey* Registry::keyAt(const WideText& path) const {
    const std::string stored = known(storedFromWide(path.view()));
    std::string_view rest = stored;
    const auto hive = hiveByName(nextPathName(rest));
    return hive ? findBelow(*hive, rest) : nullptr;
}

RegistryKey* Registry::makeKey(std::size_t hive, std::string_view path) {
    bool created = false;
    const Converted within = ntFamily_ ? Converted(path) : Converted(withinCodePage(path));
    path = within.view();
    if (hive == kClassesRoot) return findOrMakeClass(path, created);
    return tree_.findOrMake(roots_[hive], path, created);
}

RegistryKey* Registry::makeKeyAt(const WideText& path) {
    const std::string stored = storedFromWide(path.view());
    std::string_view rest = stored;
    const auto hive = hiveByName(nextPathName(rest));
    return hive && namesFit(rest) ? makeKey(*hive, rest) : nullptr;
}

bool Registry::deleteKey(std::size_t hive, std::string_view path) {
    RegistryKey* key = findBelow(hive, known(path));
    if (key == nullptr || isRoot(key)) return false;
    tree_.remove(key);
    return true;
}

void Registry::setValue(RegistryKey* key, std::string_view name, DWORD type, const RegistryData& data) {
    if (ntFamily_) {
        tree_.setValue(key, name, type, data);
        return;
    }
    const auto made = RegistryValueNode::make(key, name, type, data);
    const Converted ansi = ansiData(*made, textRules().codePage);
    tree_.setValue(key, withinCodePage(name), type,
                   StoredData::fromAnsi(type, ansi.view(), textRules().codePage).view());
}

void Registry::deleteValue(RegistryKey* key, std::string_view name) {
    tree_.removeValue(key, known(name));
}

}  // namespace bromvale::offline
