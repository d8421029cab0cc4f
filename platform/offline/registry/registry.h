// The offline machine's registry: hives, keys, values, handles, and the rules of the two Windows families.
// The program reaches it through the functions in api.h; tests and the example machine fill and read
// it here.
//
// A whole path starts with a hive's name, "HKEY_LOCAL_MACHINE\Software\...". The tree and what is marked so
// below has names and texts in the stored form of stored_text.h.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/handle_table.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/registry/data.h"
#include "platform/offline/registry/tree.h"
#include "platform/offline/windows_types.h"

namespace bromvale::offline {

class OtherHalf;

struct RegistryValue {
    std::string name;
    DWORD type = REG_NONE;
    std::string data;  // texts with their NUL, as the ANSI functions give them under Windows-1252
    bool operator==(const RegistryValue&) const = default;
};

struct WideRegistryValue {
    std::u16string name;
    DWORD type = REG_NONE;
    std::string bytes;  // as Windows stores them: texts in UTF-16LE, with their NUL
    bool operator==(const WideRegistryValue&) const = default;
};

inline constexpr std::size_t kHiveCount = 7;
// UTF-16 units.
inline constexpr std::size_t kLongestKeyName = 255;
inline constexpr std::size_t kLongestValueName = 16383;

// Index of a hive by its name, without case; 0 is HKEY_CLASSES_ROOT, the order is that of the handles.
std::optional<std::size_t> hiveByName(std::string_view name);
std::string_view hiveName(std::size_t hive);
// No key name on the path is too long.
[[nodiscard]] bool namesFit(std::string_view path);

class Registry {
  public:
    explicit Registry(const OtherHalf& otherHalf);
    ~Registry();
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    // Empty hives, no handles; the family stays.
    void clear();

    // NT (the default): a key with sub keys is not deleted, access masks count. 9x: the sub tree goes along,
    // and nobody asks for access.
    // What the 9x family is given is cut down to its code page as it comes in.
    void setNtFamily(bool nt) { ntFamily_ = nt; }
    [[nodiscard]] bool ntFamily() const { return ntFamily_; }

    // Handles that were opened and not closed; a leak shows here.
    [[nodiscard]] std::size_t openHandles() const { return handles_.count(); }

    // Opening the key gives ERROR_ACCESS_DENIED from now on; what lies below can still be opened by its path.
    // False when there is no such key.
    bool deny(const WideText& path) { return setDenied(path, true); }
    bool allow(const WideText& path) { return setDenied(path, false); }

    // By whole path, past all access rules. An unknown hive or a name that is too long makes them return
    // false or nothing. The writers make what is missing of the path.
    [[nodiscard]] bool exists(const WideText& path) const;
    bool createKey(const WideText& path);
    // With all below it. A hive itself is emptied of nothing and stays.
    bool deleteKey(const WideText& path);
    bool setValue(std::string_view path, std::string_view name, DWORD type, std::string_view data);
    // `bytes` as Windows stores them: texts in UTF-16LE.
    bool setValue(std::u16string_view path, std::u16string_view name, DWORD type, std::string_view bytes);
    bool setText(const WideText& path, const WideText& name, const WideText& text);
    bool setNumber(const WideText& path, const WideText& name, DWORD number);
    bool deleteValue(const WideText& path, const WideText& name);
    [[nodiscard]] std::optional<RegistryValue> value(const WideText& path, const WideText& name) const;
    [[nodiscard]] std::vector<RegistryValue> values(const WideText& path) const;
    [[nodiscard]] std::vector<std::string> subKeys(const WideText& path) const;
    // With real names and texts.
    [[nodiscard]] std::optional<WideRegistryValue> wideValue(const WideText& path,
                                                             const WideText& name) const;
    [[nodiscard]] std::vector<WideRegistryValue> wideValues(const WideText& path) const;
    [[nodiscard]] std::vector<std::u16string> wideSubKeys(const WideText& path) const;

    // The key that a program in the machine knows by this path, whose view may be the other half's; null
    // where there is none.
    [[nodiscard]] RegistryKey* seenAt(const WideText& path) const;

    // Without the hives.
    [[nodiscard]] std::size_t keyCount() const { return tree_.keyCount(); }
    [[nodiscard]] std::size_t valueCount() const { return tree_.valueCount(); }

    // For the functions of api.h and the .reg file code, in the stored form ----------------

    // ERROR_SUCCESS, ERROR_INVALID_HANDLE, ERROR_KEY_DELETED, or ERROR_ACCESS_DENIED when the handle was
    // opened without `access` on the NT family.
    LONG resolve(HKEY handle, DWORD access, RegistryKey*& key) const;
    [[nodiscard]] static bool isHive(HKEY handle);
    [[nodiscard]] RegistryKey* find(HKEY handle, RegistryKey* key, std::string_view path) const;
    // Null when a name is too long.
    RegistryKey* findOrMake(HKEY handle, RegistryKey* key, std::string_view path, bool& created);
    HKEY open(RegistryKey* key, DWORD access);
    LONG close(HKEY handle);

    [[nodiscard]] RegistryTree& tree() { return tree_; }
    [[nodiscard]] const RegistryTree& tree() const { return tree_; }
    // By a hive's index and the path below it; names must fit.
    RegistryKey* makeKey(std::size_t hive, std::string_view path);
    bool deleteKey(std::size_t hive, std::string_view path);
    void setValue(RegistryKey* key, std::string_view name, DWORD type, const RegistryData& data);
    void deleteValue(RegistryKey* key, std::string_view name);
    // By whole path; null where there is none.
    [[nodiscard]] RegistryKey* keyOf(const WideText& path) const { return keyAt(path); }
    // The hive's own root. HKEY_CLASSES_ROOT is a view of other hives and has nothing of its own.
    [[nodiscard]] RegistryKey* root(std::size_t hive) const { return roots_[hive]; }
    [[nodiscard]] bool isRoot(const RegistryKey* key) const;

  private:
    struct Opened {
        RegistryKey* key = nullptr;
        DWORD access = 0;
    };
    [[nodiscard]] RegistryKey* hiveKey(std::size_t hive) const;
    [[nodiscard]] RegistryKey* findClass(std::string_view path) const;
    RegistryKey* findOrMakeClass(std::string_view path, bool& created);
    [[nodiscard]] RegistryKey* findBelow(std::size_t hive, std::string_view path) const;
    [[nodiscard]] RegistryKey* keyAt(const WideText& path) const;
    RegistryKey* makeKeyAt(const WideText& path);
    [[nodiscard]] const RegistryValueNode* nodeAt(const WideText& path, const WideText& name) const;
    bool put(const WideText& path, const WideText& name, DWORD type, const StoredData& data);
    bool setDenied(const WideText& path, bool denied);
    // What this family knows of a name.
    [[nodiscard]] std::string known(std::string_view stored) const;
    void makeRoots();
    void letGo(RegistryKey* key);
    void dropAll();

    RegistryTree tree_;
    std::array<RegistryKey*, kHiveCount> roots_{};
    HandleTable<Opened, HKEY> handles_;
    const OtherHalf& otherHalf_;
    bool ntFamily_ = true;
};

}  // namespace bromvale::offline
