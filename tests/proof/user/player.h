#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bromvale-offline/transcript.h"

namespace bromvale::proof {

struct PlayedCounts {
    int done = 0;        // actions
    int nested = 0;      // of them in the midst of others, or while a box stood
    int passedOver = 0;  // could not be done
    int servings = 0;    // of events
};

// Runs the whole program and does actions on it until there is none left or the program ends.
class Player {
  public:
    // The next action; nothing at the end.
    using Source = std::function<std::optional<std::string>()>;
    explicit Player(Source source);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void run();
    // A box or dialog of the system stands.
    void box();
    [[nodiscard]] const std::vector<std::string>& wrongs() const { return wrongs_; }
    [[nodiscard]] const PlayedCounts& counts() const { return counts_; }
    // Told of each action before it is done.
    std::function<void(const std::string& action)> onAction;

  private:
    bool next();
    void perform(std::string_view action, bool nested);
    void dispatch(std::string_view action);
    void later(std::string_view rest);
    void lookAtPlace();
    void lookAround();
    void lookAtScan();
    void leave();
    void wrong(const std::string& text);

    Source source_;
    offline::Transcript transcript_;
    std::vector<std::string> inBox_;
    std::vector<std::string> wrongs_;
    PlayedCounts counts_;
    bool opened_ = false;   // the window has been looked at
    bool leaving_ = false;  // what was left for later is not done any more
};

}  // namespace bromvale::proof
