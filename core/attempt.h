#pragma once
#include <new>
#include <optional>
#include <string>

#include "base/failure.h"

namespace bromvale {

// How a routine's failure handler ends.
enum class Ending {
    Next,   // go on with the statement behind the failing one
    Retry,  // run the failing statement once more
    Leave,  // leave the statements: the call returns false, and the routine goes to its end
};

// What a statement throws, as the routines know it: memory that runs out is failure 7. Empty where it went
// well.
template <class Statement>
std::optional<Failure> failureOf(Statement& statement) {
    try {
        statement();
        return std::nullopt;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::bad_alloc&) {
        return Failure{7, std::string(failureText(7))};
    }
}

// Runs one statement of a routine under that routine's handler, which takes a Failure and says how to go on.
// While the handler runs, lastFailure() holds the failure; afterwards it is clear again. A failure in the
// handler itself goes to the caller. Example:
//
//     const auto onFailure = reportAndGoOn({"frmMain", "cmdStart_Click"});  // core/handling.h
//     attempt(onFailure, [&] { percent = divide(faults, total); });
//
// Returns false where the handler chose Leave.
template <class Handler, class Statement>
bool attempt(const Handler& handler, Statement&& statement) {
    for (;;) {
        const std::optional<Failure> failure = failureOf(statement);
        if (!failure) return true;
        setLastFailure(*failure);
        const Ending ending = handler(*failure);
        clearLastFailure();
        if (ending == Ending::Next) return true;
        if (ending == Ending::Leave) return false;
    }
}

// The handler of routines that swallow failures and go on.
inline constexpr auto kGoOn = [](const Failure&) { return Ending::Next; };

}  // namespace bromvale
