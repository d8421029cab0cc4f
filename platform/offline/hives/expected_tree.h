// A hive less the keys that are to go, as another reading of it is compared with; for both readers.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/hives/hive.h"

namespace bromvale::offline {

class ExpectedTree {
  public:
    // HiveDamage where a cell of `gone` is no key.
    ExpectedTree(const Hive& hive, std::span<const Cell> gone);

    [[nodiscard]] const Hive& hive() const { return hive_; }
    [[nodiscard]] bool isGone(Cell key) const;
    // In the file's order.
    [[nodiscard]] std::vector<Cell> subKeys(const HiveKey& key) const;

    // "\A\B: WHAT". The key must have been reached from the root.
    [[nodiscard]] std::string about(const HiveKey& key, const std::string& what) const;

    // Why names that were found are not those that the key's sub keys or values have, as
    // `readersName` makes them of ours: one is missing, still there, additional, or at another place.
    using ReadersName = std::string (*)(std::u16string_view);
    [[nodiscard]] std::string aboutSubKeys(const HiveKey& key, const std::vector<std::string>& found,
                                           ReadersName readersName) const;
    [[nodiscard]] std::string aboutValues(const HiveKey& key, const std::vector<std::string>& found,
                                          ReadersName readersName) const;
    [[nodiscard]] std::string aboutValue(const HiveKey& key, const HiveValue& value,
                                         const std::string& what) const;

  private:
    const Hive& hive_;
    std::vector<Cell> gone_;  // in order
};

// UTF-8; half of a surrogate pair stays in the form that UTF-8 would have for it.
[[nodiscard]] std::string utf8Name(std::u16string_view name);

}  // namespace bromvale::offline
