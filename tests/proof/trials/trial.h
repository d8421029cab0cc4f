#pragma once
// One generated machine: everything is done on it that the program does, and looked at what came of it.
#include <string>
#include <vector>

#include "tests/proof/machine/stage.h"
#include "tests/proof/oracle/scan.h"

namespace bromvale::proof {

struct Counts {
    int machines = 0;
    int entries = 0;
    int rows = 0;
    int keysGone = 0;
    int filesGone = 0;
    int started = 0;
};

class Trial {
  public:
    Trial(const Model& model, const std::string& hostFolder);

    void run();
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }
    [[nodiscard]] const Counts& counts() const { return counts_; }

    void scan();
    void remove();
    void putBack();
    void emptyFolders();
    void uninstall();
    void useBackupPage();

  private:
    void problem(const std::string& text) { problems_.push_back(text); }
    void same(const std::string& what, const RegistrySnapshot& before, const RegistrySnapshot& after);
    void compareRows(const std::vector<Row>& expectedRows);
    [[nodiscard]] std::vector<std::size_t> startRemoval();
    void checkRemoval(const RegistrySnapshot& after, const std::vector<std::size_t>& removed);
    void checkGone(const RegistrySnapshot& gone, const std::vector<std::size_t>& removed);
    void checkLeft(const RegistrySnapshot& after, const std::vector<std::size_t>& removed);
    void checkCopies(const RegistrySnapshot& gone);
    [[nodiscard]] bool mayStay(const Text& target) const;
    void chooseFolders();
    void checkDrive(const DriveSnapshot& before, const DriveSnapshot& after);
    void uninstallRow(int number);
    void checkStarted(const std::string& name, const std::vector<Text>& commands);
    void checkOffer(const std::string& name, const std::vector<Text>& commands, const Text& key);
    void backupRow(int number);

    Model model_;
    Stage stage_;
    Oracle oracle_;
    std::vector<std::string> problems_;
    Counts counts_;
    RegistrySnapshot atStart_;
    Findings expected_;
};

}  // namespace bromvale::proof
