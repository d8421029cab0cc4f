#pragma once
// The machine in front of which a random user sits, and what must hold on it whatever was done.
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/proof/machine/stage.h"

namespace bromvale::proof {

class UserGround {
  public:
    // A generated machine with its registry, drive, undo files, list of folders and settings. Follows from
    // here on what is written into complete copies, and what the user has the registry editor enter.
    UserGround(std::uint64_t seed, std::string hostFolder);
    ~UserGround();
    UserGround(const UserGround&) = delete;
    UserGround& operator=(const UserGround&) = delete;

    [[nodiscard]] const Model& model() const { return model_; }
    // What is broken: keys gone without a complete copy, or changed; files gone from outside of the listed
    // folders; settings or a list that can't be read; copies that don't bring everything back. Puts the
    // registry back.
    [[nodiscard]] std::vector<std::string> wrongs();
    [[nodiscard]] int keysGone() const { return keysGone_; }
    [[nodiscard]] int filesGone() const { return filesGone_; }

    // Called while a message box or a dialog of the system stands.
    std::function<void()> onBox;

  private:
    void putUpSettings();
    void putUpList();
    void follow();
    void copyGrows(const std::string& path, const std::string& bytes);
    void fileGoes(const std::string& path);
    void userEnters(const std::string& path);
    [[nodiscard]] std::string fileName(std::string_view path) const;
    void registryWrongs();
    void copyWrongs(const RegistrySnapshot& gone);
    void driveWrongs();
    void settingsWrongs();
    void listWrongs();
    void putBack();
    void wrong(const std::string& text) { wrongs_.push_back(text); }

    Model model_;
    Stage stage_;
    std::string hostFolder_;
    RegistrySnapshot registry_;
    DriveSnapshot drive_;
    std::map<std::string, std::string> copies_;  // bytes by path, of those that are there
    std::vector<std::string> deletedCopies_;
    // What went into the complete copies and what the user entered, in the order of time: registry files.
    std::vector<std::string> entered_;
    std::set<Text> enteredKeys_;  // by the user
    std::vector<std::string> wrongs_;
    int keysGone_ = 0;
    int filesGone_ = 0;
};

}  // namespace bromvale::proof
