#include "platform/win32/windows/window_peer.h"

#include <algorithm>
#include <vector>

namespace bromvale {

namespace {

// Milliseconds. A dozen pictures a second look lively in labels and a bar; 60 cost a scan a third of its
// time.
constexpr DWORD kFrame = 80;

struct Queue {
    std::vector<WindowPeer*> waiting;
    DWORD flushedAt = 0;
    UINT_PTR timer = 0;
};

Queue& queue() {
    static Queue instance;
    return instance;
}

// Message boxes and menus run loops of their own, in which only timers reach us. The timer stays while there
// is something to do at each tick, so that a scan doesn't set and kill it all the time.
void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
    Queue& state = queue();
    if (!state.waiting.empty()) {
        flushPaints();
        return;
    }
    KillTimer(nullptr, state.timer);
    state.timer = 0;
}

}  // namespace

void queuePaint(WindowPeer& peer) {
    Queue& state = queue();
    if (state.waiting.empty() && state.timer == 0) state.timer = SetTimer(nullptr, 0, kFrame, onTimer);
    state.waiting.push_back(&peer);
}

void forgetPaint(WindowPeer& peer) {
    std::erase(queue().waiting, &peer);
}

void flushPaints() {
    Queue& state = queue();
    if (state.waiting.empty()) return;
    state.flushedAt = GetTickCount();
    // What a peer's window does in answer may queue others; they wait for the next round.
    for (std::size_t left = state.waiting.size(); left > 0 && !state.waiting.empty(); --left) {
        WindowPeer* const peer = state.waiting.front();
        state.waiting.erase(state.waiting.begin());
        peer->flush();
    }
}

void flushDuePaints() {
    const Queue& state = queue();
    if (!state.waiting.empty() && GetTickCount() - state.flushedAt >= kFrame) flushPaints();
}

}  // namespace bromvale
