#pragma once
#include <functional>
#include <type_traits>

#include "base/failure.h"

namespace bromvale {

// Lets the user interface process all waiting events: handlers of other controls run inside this call.
// Paintings that are due (at most ten a second) are made first.
void DoEvents();

// The same for a loop that comes by for every registry value: waiting events are looked for every 10 ms only,
// since with a window a look costs more than the value's reading; more often while another thread asks the
// windows for answers. Offline it is the same as DoEvents.
void DoEventsOften();

// For a routine at work that no handler may interrupt: lets the windows paint themselves, be moved, put aside
// and brought back, and answer the system, which otherwise takes them for hung. Keys, clicks into the windows
// and their closing wait until events are served. Cheap enough to be called for each file of a folder.
void ServeWindows();

// Sleeps until an event arrives or the time is over, whichever is first; processes nothing.
// Offline the machine's clock moves on by the whole time.
void WaitForEvents(unsigned milliseconds);

// Serves events until no form is loaded.
void RunEventLoop();

// Called once by each DoEvents, often or not: tests act here while a routine is at work. Empty for none.
void setPumpObserver(std::function<void()> observer);

// What happens to a failure that no handler below an event caught. Set once by the start-up code;
// without it the failure is dropped.
void setUnhandledFailure(std::function<void(const Failure&)> handler);

// Runs the handler of an event that the user caused: failures end here and go to the handler above.
void dispatchUserEvent(const std::function<void()>& handler);
template <class... Arguments>
void dispatchUserEvent(const std::function<void(Arguments...)>& handler,
                       const std::type_identity_t<Arguments>&... arguments) {
    if (handler) dispatchUserEvent([&] { handler(arguments...); });
}

}  // namespace bromvale
