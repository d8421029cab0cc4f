#pragma once
#include <deque>
#include <string>
#include <string_view>

#include "bromvale-offline/transcript.h"

namespace bromvale::offline {

// An action that could not be done; the text says which and why.
struct ScriptError {
    std::string text;
};

// The user of the machine: a list of actions, done one after the other whenever the program waits for events.
class Script {
  public:
    explicit Script(Transcript& transcript) : transcript_(transcript) {}

    // Windows-1252, one action a line. False where the file can't be read.
    [[nodiscard]] bool load(const std::string& file);
    void addLine(std::string_view text);

    // Does the next action; false when there is none left. Throws ScriptError.
    bool next();
    // The entry that the next line chooses from a menu that has just opened, empty when that line does
    // something else.
    [[nodiscard]] std::string takeMenuChoice();

    // Does one action, as a script's line has it.
    void run(std::string_view action);

  private:
    struct Line {
        std::string text;
        int number;
    };
    std::deque<Line> lines_;
    int lastNumber_ = 0;
    int current_ = 0;
    Transcript& transcript_;
};

// Does the action with this name. Throws ScriptError where it can't be done.
void doAction(std::string_view word, std::string_view rest, Transcript& transcript);

}  // namespace bromvale::offline
