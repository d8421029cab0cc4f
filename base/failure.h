#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// A runtime failure: number and German text. Numbers in use: 5, 6, 7, 9, 11, 13, 52, 53, 55, 70, 71, 75, 76,
// 35600 and the program's own from 10000 and 60000 on.
struct Failure {
    // Those that handlers tell from others.
    static constexpr int kInvalidCall = 5;
    static constexpr int kNoMemory = 7;
    static constexpr int kTypesDiffer = 13;
    static constexpr int kBadFileName = 52;
    static constexpr int kFileNotFound = 53;
    static constexpr int kNoPermission = 70;
    static constexpr int kDiskNotReady = 71;
    static constexpr int kNoAccess = 75;
    static constexpr int kPathNotFound = 76;
    static constexpr int kIndexOutOfBounds = 35600;

    int number = 0;
    std::string description;
};

// The German text of a runtime failure, "Anwendungs- oder objektdefinierter Fehler" for a number without one.
[[nodiscard]] std::string_view failureText(int number);

// Throws Failure with the number's own text.
[[noreturn]] void raise(int number);

// The latest caught failure while its handler runs; number 0 and empty text otherwise.
[[nodiscard]] const Failure& lastFailure();
void setLastFailure(const Failure& failure);
void clearLastFailure();

}  // namespace bromvale
