#pragma once
// The ground of the tests of files: the offline machine gives the same answers on each kind of its drives.
#include <string>
#include <vector>

#include "tests/support/test_machine.h"

namespace bromvale::testing {

// By provider: what C: can be.
std::vector<std::string> kindsOfDrives();
// Makes it that, with the test's own folder on it, and takes it back.
void putDrive(const std::string& kind, const std::string& folder);
void removeDrive();

class OnDrives : public TestMachine, public ::testing::WithParamInterface<std::string> {
  protected:
    OnDrives() { putDrive(GetParam(), folder()); }
    ~OnDrives() override { removeDrive(); }
};

}  // namespace bromvale::testing

#define BROMVALE_ON_DRIVES(suite)                                                 \
    INSTANTIATE_TEST_SUITE_P(Drives, suite, ::testing::ValuesIn(kindsOfDrives()), \
                             [](const auto& info) { return info.param; })
