// The keys of a hive and the lists of their sub keys, for the checker.
#pragma once

#include <string>
#include <vector>

#include "platform/offline/hives/cell_map.h"
#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/security_checker.h"
#include "platform/offline/hives/value_checker.h"

namespace bromvale::offline {

class KeyChecker {
  public:
    KeyChecker(CellMap& cells, HiveCheck& check, const BaseBlock& base);

    // Goes through the whole tree, and claims all that its keys refer to.
    void walk();

  private:
    struct Pending {
        Cell cell = kNil;
        Cell parent = kNil;  // for the root
    };
    // What the lists of one key have brought so far.
    struct SubKeys {
        Cell parent = kNil;
        std::uint32_t count = 0;
        std::size_t longestName = 0;  // bytes of UTF-16
    };

    void checkKey(const Pending& pending);
    void checkNode(const Pending& pending, HiveBytes node);
    void checkFields(const Pending& pending, HiveBytes node);
    void checkClassName(HiveBytes node);
    void checkSubKeys(Cell cell, HiveBytes node);
    void checkList(HiveBytes list, SubKeys& subKeys, bool listsAllowed);
    void checkParts(HiveBytes list, std::size_t count, SubKeys& subKeys);
    void checkEntries(HiveBytes list, std::size_t count, SubKeys& subKeys);
    void checkEntry(HiveBytes list, std::size_t at, SubKeys& subKeys);
    void checkHint(HiveBytes list, std::size_t at, std::string_view nameBytes, bool oneByte);

    CellMap& cells_;
    HiveCheck& check_;
    const BaseBlock& base_;
    SecurityChecker security_;
    ValueChecker values_;
    std::vector<Pending> pending_;
    std::u16string name_;          // of the entry at hand, upper-cased
    std::u16string previousName_;  // of the one before it
};

}  // namespace bromvale::offline
