#include "platform/win32/windows/window_peer.h"

#include <algorithm>
#include <vector>

namespace bromvale {

namespace {

// Milliseconds. Ten pictures a second look lively in labels and a bar; 60 cost a scan a third of its time.
constexpr DWORD kFrame = 100;

std::vector<WindowPeer*> waiting;
DWORD flushedAt = 0;
UINT_PTR timer = 0;

// Message boxes and menus run loops of their own, in which only timers reach us. The timer stays while there
// is something to do at each tick, so that a scan doesn't set and kill it all the time.
void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (!waiting.empty()) {
        flushPaints();
        return;
    }
    KillTimer(nullptr, timer);
    timer = 0;
}

}  // namespace

void queuePaint(WindowPeer& peer) {
    if (waiting.empty() && timer == 0) timer = SetTimer(nullptr, 0, kFrame, onTimer);
    waiting.push_back(&peer);
}

void forgetPaint(WindowPeer& peer) {
    std::erase(waiting, &peer);
}

void flushPaints() {
    if (waiting.empty()) return;
    flushedAt = GetTickCount();
    // What a peer's window does in answer may queue others; they wait for the next round.
    for (std::size_t left = waiting.size(); left > 0 && !waiting.empty(); --left) {
        WindowPeer* const peer = waiting.front();
        waiting.erase(waiting.begin());
        peer->flush();
    }
}

void flushDuePaints() {
    if (!waiting.empty() && GetTickCount() - flushedAt >= kFrame) flushPaints();
}

}  // namespace bromvale
