// A raw hive as a part of the offline machine's registry, which takes from it what somebody looks at.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/image.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {

class MountedHive : public KeySource {
  public:
    // With its logs replayed, where it has any. HiveDamage where it is no hive.
    explicit MountedHive(HiveImage&& image) : image_(std::move(image)), hive_(image_.bytes()) {}

    [[nodiscard]] const HiveImage& image() const { return image_; }
    [[nodiscard]] const Hive& hive() const { return hive_; }

    // What could not be read so far, a text a key (English, the first hundred), and how much it was.
    [[nodiscard]] const std::vector<std::string>& damages() const { return damages_; }
    [[nodiscard]] std::size_t damageCount() const { return damageCount_; }
    // Keys and values whose names no function of Windows can be told: with a NUL, keys also with a backslash.
    // Nothing in the machine knows them.
    [[nodiscard]] std::size_t unnameable() const { return unnameable_; }

    void fill(RegistryTree& tree, RegistryKey* key, std::uint32_t place) override;

  private:
    void fillValues(RegistryTree& tree, RegistryKey* key, const HiveKey& node);
    void fillSubKeys(RegistryTree& tree, RegistryKey* key, const HiveKey& node);
    void note(const RegistryKey* key, const HiveDamage& damage);

    HiveImage image_;
    Hive hive_;
    std::vector<std::string> damages_;
    std::size_t damageCount_ = 0;
    std::size_t unnameable_ = 0;
};

// The key at `path` (made where it is missing) holds what the hive has at `place`, beside what it has
// already. False where the path begins with no hive's name or a name is too long.
bool mountHive(Registry& registry, const WideText& path, const std::shared_ptr<MountedHive>& hive,
               Cell place);

}  // namespace bromvale::offline
