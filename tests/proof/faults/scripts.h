#pragma once
// What a user does with the program, on a machine as small as it can be: each a click or a few. Whatever
// fails on the way, the same holds behind it, and the click once more does its work.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/proof/machine/stage.h"

namespace bromvale::proof {

// The machine with everything prepared for a script, and how it stood then.
class Ground {
  public:
    Ground();

    void remember();
    void traceFromNow() { stage_->traceFromNow(); }
    // What is wrong behind the script, and behind a fault in it.
    [[nodiscard]] std::vector<std::string> wrongs(const struct Script& script) const;

    struct Handles {
        std::size_t keys = 0;
        std::size_t searches = 0;
        std::size_t files = 0;
        std::size_t internet = 0;
    };
    [[nodiscard]] static Handles handles();
    [[nodiscard]] const Handles& handlesBefore() const { return handles_; }

  private:
    void registryWrongs(const Script& script, std::vector<std::string>& wrongs) const;
    void driveWrongs(const Script& script, std::vector<std::string>& wrongs) const;

    Model model_;
    std::unique_ptr<Stage> stage_;
    RegistrySnapshot registry_;
    DriveSnapshot drive_;
    Handles handles_;
};

struct Script {
    const char* name;
    std::function<void()> prepare;
    std::function<void()> act;
    // Brings the window back to where `act` can be done again.
    std::function<void()> again;
    // The work is done; behind a fault, as far as it was left to do.
    std::function<bool()> isDone;
    std::function<bool()> isDoneAgain{};
    bool removesKeys = false;           // with record and copy
    bool needsRecord = true;            // the programs page keeps copies only
    std::string writes{};               // a folder in which files may change, with its backslash; or a file
    std::string writesKey{};            // a key whose values may change
    std::vector<std::string> starts{};  // what may be started or opened
};

[[nodiscard]] const std::vector<Script>& scripts();

// A web server of this test's own, in a process of its own; its host and port.
[[nodiscard]] std::string startWebServer();
void stopWebServer();

}  // namespace bromvale::proof
