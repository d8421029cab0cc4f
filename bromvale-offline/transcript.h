#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/desktop/events.h"

namespace bromvale {
class Form;
}

namespace bromvale::offline {

// Standard output: one line for each thing that leaves the program. Text is Windows-1252 up to here and UTF-8
// beyond.
class Transcript {
  public:
    // Follows the machine's events from now on.
    void attach();
    void line(std::string_view text);
    // Lines for windows that were shown or have gone since the last look.
    void lookAtWindows();
    void flush();

  private:
    void event(const Event& event);
    std::vector<Form*> shown_;
    std::vector<std::string> names_;
};

// One line's worth: line ends become \n (a lone CR \r), other control characters \x01. Tabs stay.
[[nodiscard]] std::string oneLine(std::string_view text);

}  // namespace bromvale::offline
