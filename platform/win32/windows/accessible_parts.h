#pragma once
#include <string>

#include "platform/win32/windows/accessibility.h"

namespace bromvale {

// What an assistive tool hears of a window, or of a part of it that is no window.
struct AccessiblePart {
    std::string name;
    std::string description;
    std::string value;
    std::string action;  // what its default action is called; empty for none
    LONG role = 0;
    LONG state = 0;
    RECT place{};  // pixels of the screen, as far as it is seen
};

// A window that draws its parts itself. Part 0 is the window, the others count from 1, from top to bottom.
// Calls come on the window's own thread, whenever it serves events.
class AccessibleParts {
  public:
    [[nodiscard]] virtual int count() const = 0;
    [[nodiscard]] virtual AccessiblePart part(int number) const = 0;
    // The part with the keyboard, and the marked one; -1 for none.
    [[nodiscard]] virtual int focusedPart() const { return -1; }
    [[nodiscard]] virtual int selectedPart() const { return -1; }
    // Presses a part soon: the caller doesn't wait for what follows.
    virtual void pressSoon(int /*number*/) {}
    // Brings the keyboard to a part, and with `focus` to the window. False where the window can't have it.
    virtual bool choosePart(int /*number*/, bool /*focus*/) { return false; }

  protected:
    ~AccessibleParts() = default;
};

// Windows itself tells so many parts of the window, as its common controls do in most versions.
[[nodiscard]] bool tellsParts(HWND window, int count);

class AccessibleObject;

// The object that speaks for a window. Tools may hold it longer than the window lives; from then on it
// answers that it is not connected.
class AccessibleWindow {
  public:
    AccessibleWindow() = default;
    ~AccessibleWindow();
    AccessibleWindow(const AccessibleWindow&) = delete;
    AccessibleWindow& operator=(const AccessibleWindow&) = delete;

    // Answers WM_GETOBJECT; 0 for what is asked of Windows itself, and where there is no such interface.
    [[nodiscard]] LRESULT answer(HWND window, AccessibleParts& parts, WPARAM wParam, LPARAM lParam);

  private:
    AccessibleObject* object_ = nullptr;
};

}  // namespace bromvale
