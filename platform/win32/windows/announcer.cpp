#include "platform/win32/windows/announcer.h"

#include "platform/controls/announcements.h"
#include "platform/win32/windows/accessibility.h"

namespace bromvale {
namespace {

constexpr DWORD kLiveRegionChanged = 0x8019;  // EVENT_OBJECT_LIVEREGIONCHANGED, known from Windows 8 on
constexpr UINT kLook = 100;                   // milliseconds between two looks at what waits

Announcements announcements;
UINT_PTR timer = 0;

void tellNext() {
    const Label* const label = announcements.next(GetTickCount());
    if (label == nullptr || label->peer() == nullptr) return;
    tellAssistive(EVENT_OBJECT_NAMECHANGE, label->peer()->window());
    tellAssistive(kLiveRegionChanged, label->peer()->window());
}

void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
    tellNext();
    if (announcements.waiting()) return;
    KillTimer(nullptr, timer);
    timer = 0;
}

}  // namespace

void announce(const Label& label) {
    announcements.changed(label);
    tellNext();
    if (timer == 0 && announcements.waiting()) timer = SetTimer(nullptr, 0, kLook, look);
}

void forgetAnnouncement(const Label& label) {
    announcements.forget(label);
}

}  // namespace bromvale
