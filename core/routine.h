#pragma once
#include <cstdint>
#include <string_view>

#include "base/failure.h"
#include "base/function_ref.h"
#include "core/log.h"

namespace bromvale {

// How a routine's failure handler ends.
enum class Ending {
    Next,   // go on with the statement behind the failing one
    Retry,  // run the failing statement once more
    Leave,  // leave the statements: the call returns false, and the routine goes to its end
};

// Runs one statement under a handler, which takes the failure and says how to go on. Memory that runs out is
// failure 7. While the handler runs, lastFailure() holds the failure; afterwards it is clear again. A failure
// in the handler itself goes to the caller. Returns false where the handler chose Leave.
bool attempt(FunctionRef<Ending(const Failure&)> handler, FunctionRef<void()> statement);

// Failures of this statement are passed over without a word.
void quietly(FunctionRef<void()> statement);

// What most routines do about a failure: report it without words of their own and go on. A handler that
// reports otherwise calls one of these.
struct Report {
    Ending ending = Ending::Next;
    std::int32_t style = kStyleExclamation;
    std::int16_t show = kHide;
    std::string_view text = {};

    Ending operator()(const Tags& tags, const Failure& failure) const;
};

// A routine that must not stop: its tags, its handler, and its steps. Only statements that can fail are
// steps. A handler of its own takes the tags and the failure, may say something, and tells how to go on.
// Example:
//
//     constexpr Routine kRoutine{{"frmMain", "cmdStart_Click"}};
//
//     kRoutine.started();
//     kRoutine.step([&] { percent = divide(faults, total); });
//     kRoutine.ended();
template <class Handler = Report>
class Routine : public Tags {
  public:
    constexpr explicit Routine(Tags tags, Handler handler = {}) : Tags(tags), handler_(handler) {}

    // False where the handler chose Leave.
    bool step(FunctionRef<void()> statement) const {
        return attempt([this](const Failure& failure) { return handler_(*this, failure); }, statement);
    }
    void started() const { trace("started"); }
    void ended() const { trace("endet"); }

  private:
    Handler handler_;
};

}  // namespace bromvale
