#include "platform/offline/desktop/pump.h"

#include <algorithm>

#include "platform/controls/form.h"
#include "platform/controls/timer.h"
#include "platform/events.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {

void Pump::observe(std::function<void(std::uint64_t)> observer) {
    observer_ = std::move(observer);
    attention_ = 0;
}

void Pump::at(std::uint64_t n, std::function<void()> action) {
    actions_.emplace(calls_ + n, std::move(action));
    attention_ = std::min(attention_, calls_ + n);
}

void Pump::serveDue() {
    attention_ = observer_ ? 0 : UINT64_MAX;
    const std::uint64_t call = calls_;
    if (observer_) {
        const auto observer = observer_;  // may replace itself
        observer(call);
    }
    // An action may serve events itself, so each one is taken out before it runs.
    while (!actions_.empty() && actions_.begin()->first <= calls_) {
        const auto action = std::move(actions_.begin()->second);
        actions_.erase(actions_.begin());
        action();
    }
    runTimers();
    if (!actions_.empty()) attention_ = std::min(attention_, actions_.begin()->first);
}

void Pump::noteTimers() {
    const Milliseconds now = clock_.now();
    std::vector<Running> running;
    for (Form* form : loadedForms()) {
        for (Control* control : form->controls()) {
            auto* timer = as<Timer>(control);
            if (timer == nullptr || !timer->enabled() || timer->interval() == 0) continue;
            const auto known = std::find_if(running_.begin(), running_.end(), [&](const Running& entry) {
                return entry.timer == timer && entry.interval == timer->interval();
            });
            running.push_back(known != running_.end()
                                  ? *known
                                  : Running{timer, timer->interval(), now + timer->interval()});
        }
    }
    running_ = std::move(running);
}

void Pump::runTimers() {
    noteTimers();
    const Milliseconds now = clock_.now();
    std::vector<Timer*> due;
    for (Running& entry : running_) {
        if (entry.due > now) continue;
        entry.due = now + entry.interval;  // what was missed is not made up for
        due.push_back(entry.timer);
    }
    for (Timer* timer : due) {
        if (timer->enabled()) timer->tick();
    }
}

}  // namespace bromvale::offline

namespace bromvale {

void DoEvents() {
    offline::machine().pump.serve();
}

void DoEventsOften() {
    DoEvents();
}

void ServeWindows() {
    offline::machine().pump.serveWindows();
}

void WaitForEvents(unsigned milliseconds) {
    offline::machine().clock.advance(milliseconds);
}

void RunEventLoop() {
    auto& pump = offline::machine().pump;
    while (!loadedForms().empty()) {
        DoEvents();
        if (loadedForms().empty() || !pump.nextAction || !pump.nextAction()) return;
    }
}

void setPumpObserver(std::function<void()> observer) {
    auto& pump = offline::machine().pump;
    if (!observer) return pump.observe(nullptr);
    pump.observe([observer = std::move(observer)](std::uint64_t) { observer(); });
}

}  // namespace bromvale
