#include "platform/offline/hives/mounted_hive.h"

#include <new>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/locale/utf8.h"
#include "platform/offline/registry/data.h"

namespace bromvale::offline {
namespace {

constexpr std::size_t kMostDamages = 100;

bool canBeTold(std::u16string_view name) {
    return name.find(u'\0') == std::u16string_view::npos;
}

bool canBeKey(std::u16string_view name) {
    return !name.empty() && name.size() <= kLongestKeyName && canBeTold(name) &&
           name.find(u'\\') == std::u16string_view::npos;
}

}  // namespace

void MountedHive::note(const RegistryKey* key, const HiveDamage& damage) {
    ++damageCount_;
    if (damages_.size() < kMostDamages)
        damages_.push_back(utf8FromStored(pathOf(*key)) + ": " + damage.what() + " (byte " +
                           std::to_string(damage.place) + ")");
}

// What is damaged in one part of a key leaves the others readable.
void MountedHive::fill(RegistryTree& tree, RegistryKey* key, std::uint32_t place) {
    try {
        const HiveKey node = hive_.key(place);
        fillValues(tree, key, node);
        fillSubKeys(tree, key, node);
    } catch (const HiveDamage& damage) {
        note(key, damage);
    }
}

void MountedHive::fillValues(RegistryTree& tree, RegistryKey* key, const HiveKey& node) {
    try {
        for (const Cell cell : hive_.values(node)) {
            const HiveValue value = hive_.value(cell);
            // What a layer of keys has deleted.
            if ((value.flags & value_node::kFlagTombstone) != 0) continue;
            const std::u16string name = value.name();
            if (!canBeTold(name)) {
                ++unnameable_;
                continue;
            }
            const std::string bytes = hive_.data(value);
            const StoredData data = StoredData::fromWindows(value.type, bytes);
            tree.takeValue(key, storedFromWide(name), value.type, data.view());
        }
    } catch (const HiveDamage& damage) {
        note(key, damage);
    }
}

void MountedHive::fillSubKeys(RegistryTree& tree, RegistryKey* key, const HiveKey& node) {
    for (const Cell cell : hive_.subKeys(node)) {
        try {
            const std::u16string name = hive_.key(cell).name();
            if (canBeKey(name)) {
                tree.takeSubKey(key, storedFromWide(name), cell);
            } else {
                ++unnameable_;
            }
        } catch (const HiveDamage& damage) {
            note(key, damage);
        }
    }
}

bool mountHive(Registry& registry, const WideText& path, const std::shared_ptr<MountedHive>& hive,
               Cell place) {
    const std::string stored = storedFromWide(path.view());
    std::string_view rest = stored;
    const auto index = hiveByName(nextPathName(rest));
    if (!index || !namesFit(rest)) return false;
    const bool ofHive = rest.find_first_not_of('\\') == std::string_view::npos;
    RegistryKey* const key = ofHive ? registry.root(*index) : registry.makeKey(*index, rest);
    registry.tree().mount(key, hive, place);
    return true;
}

}  // namespace bromvale::offline
