#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// A runtime failure: number and German text. Numbers in use: 5, 6, 7, 9, 11, 13, 52, 53, 55, 70, 71, 75, 76,
// 35600 and the program's own from 10000 and 60000 on.
struct Failure {
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
