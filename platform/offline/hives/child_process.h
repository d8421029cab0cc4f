// Work that may end its process: done in one of its own.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace bromvale::offline {

struct ChildAnswer {
    std::string text;
    std::string problem;  // how it ended instead of answering (English: "was ended by signal 6"), or empty
};

// Forks; the child works on a copy of all memory, writes nothing to standard error and leaves no core file.
// Only for programs without other threads.
[[nodiscard]] ChildAnswer answerOfChild(const std::function<std::string()>& work,
                                        std::chrono::milliseconds patience);

}  // namespace bromvale::offline
