// Serving events without a display: see pump.h.
#include "platform/controls/form.h"
#include "platform/events.h"
#include "platform/offline/machine.h"

namespace bromvale {

void DoEvents() {
    offline::machine().pump.serve();
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
