#pragma once
// The offline machine as a model says it, with the program's state as its start leaves it.
#include <string>
#include <string_view>

#include "tests/proof/machine/model.h"
#include "tests/proof/machine/snapshot.h"
#include "tests/support/test_machine.h"

namespace bromvale::proof {

class Stage : public testing::TestMachine {
  public:
    // `hostFolder` must exist and be empty; the drive becomes a folder below it. Without one the drive lies
    // in memory, where there are no links.
    explicit Stage(const Model& model, std::string hostFolder = {});

    [[nodiscard]] std::string hostDrive() const { return host_ + "/C"; }
    // A file of the drive by its path below it, in UTF-8; empty where there is none.
    [[nodiscard]] std::string fileOnHost(const std::string& path) const;

    // The log's records, without date and time.
    std::vector<std::string> log() { return logLines(); }
    void traceFromNow() { switchTracingOn(); }
    // A start of the whole program finds what it looks for.
    void registerComponents() { makeComponents(machineSystemFolder()); }

  private:
    void TestBody() override {}
    void putUpSystem(const System& system);
    void putUpState(const System& system);
    [[nodiscard]] static std::string machineSystemFolder();

    std::string host_;
};

// Both hives of the machine.
[[nodiscard]] RegistrySnapshot readRegistry();
// The model's hives.
[[nodiscard]] RegistrySnapshot snapshotOf(const Model& model);
// The drive C: of a machine in memory, by paths with backslashes in UTF-8.
[[nodiscard]] DriveSnapshot readMemoryDrive();
// Puts the hives of the machine into the model, so that the oracle sees them as they are now. What is denied
// in the model stays so.
void readBack(Model& model);

}  // namespace bromvale::proof
