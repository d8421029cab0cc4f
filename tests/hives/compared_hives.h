// Two hives compared by both readers, and a hive to change.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/offline/hives/comparison.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {

using Difference = std::optional<std::string>;

class Comparison : public HiveFilesTest {
  protected:
    static Difference own(const std::string& before, const std::string& after,
                          const std::vector<Cell>& gone = {}) {
        return differenceOfTrees(Hive(HiveBytes(before)), Hive(HiveBytes(after)), gone);
    }
    Difference second(const std::string& before, const std::string& after,
                      const std::vector<Cell>& gone = {}) {
        passedOver_ = {};
        return differenceForSecondReader(write("after", after), Hive(HiveBytes(before)), gone, &passedOver_);
    }
    void expectSame(const std::string& before, const std::string& after, const std::vector<Cell>& gone = {}) {
        EXPECT_EQ(Difference(), own(before, after, gone));
        if (hasSecondReader()) {
            EXPECT_EQ(Difference(), second(before, after, gone));
        }
    }
    // By each of the two readers.
    void expectDifference(const std::string& text, const std::string& before, const std::string& after,
                          const std::vector<Cell>& gone = {}) {
        EXPECT_EQ(Difference(text), own(before, after, gone));
        if (hasSecondReader()) {
            EXPECT_EQ(Difference(text), second(before, after, gone));
        }
    }
    [[nodiscard]] const PassedOver& passedOver() const { return passedOver_; }

  private:
    PassedOver passedOver_;
};

// \Aä\B with values, \C, \D.
MadeHive exampleHive();
// The example's file after a change.
std::string changed(const std::function<void(MadeKey& root, MadeKey& a, MadeKey& b)>& change);
// As bytesOf, which the fixture has for files.
std::string fileOf(const MadeHive& hive);

}  // namespace bromvale::offline
