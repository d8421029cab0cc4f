#pragma once
#include "base/scale.h"
#include "platform/controls/control.h"
#include "platform/win32/system/windows.h"

namespace bromvale {

// Runs what an event of a window starts. Nothing thrown leaves it, since nothing may pass through Windows'
// own frames.
void guarded(const std::function<void()>& action);

// What a new window is made of.
struct WindowShape {
    const char* windowClass;
    DWORD style;
    DWORD extendedStyle = 0;
};

// One control's real window. Writes that only change what is painted are collected and made together, at most
// ten times a second (see queuePaint); the others at once. While the peer itself changes the window,
// `busy` holds and the notifications that come back are not taken for the user's.
class WindowPeer : public ControlPeer {
  public:
    explicit WindowPeer(Control& control) : control_(control) {}
    ~WindowPeer() override;
    WindowPeer(const WindowPeer&) = delete;
    WindowPeer& operator=(const WindowPeer&) = delete;

    [[nodiscard]] HWND window() const override { return window_; }
    void changed(Property property) override;
    void takeFocus() override;
    [[nodiscard]] Control& control() const { return control_; }

    // Makes the collected changes now.
    void flush();

    // That of the form's window.
    [[nodiscard]] virtual Scale scale() const;
    // The form's scaling was another one: the window gets its font, its place and its pictures anew.
    virtual void rescaled(const Scale& before);
    // Pixels by which what the window holds is scrolled.
    [[nodiscard]] virtual POINT scrolled() const { return {0, 0}; }
    // Scrolls what the window holds; false where there is nothing to scroll.
    virtual bool scrollBy(POINT /*pixels*/) { return false; }

    // Sent on by the window that holds this one.
    virtual void command(UINT /*code*/) {}
    virtual bool notification(NMHDR* /*header*/, LRESULT& /*result*/) { return false; }
    // Brush behind the control's text, with the text's colours set; null for Windows' own.
    virtual HBRUSH colours(HDC /*dc*/, UINT /*message*/) { return nullptr; }

    // True for a key that the control itself needs before the form looks at it; `focus` is the window that
    // has the keyboard, this one or one inside it.
    [[nodiscard]] virtual bool keepsKey(WPARAM /*key*/, HWND /*focus*/) const { return false; }

    // Answers WM_GETOBJECT, by which assistive tools ask for the window's object; 0 for Windows' own answer.
    virtual LRESULT accessible(WPARAM wParam, LPARAM lParam);

    // The window's own messages. The peer may be gone when a call of userMessage or baseMessage returns.
    virtual LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT baseMessage(UINT message, WPARAM wParam, LPARAM lParam);

    static WindowPeer* of(HWND window);

  protected:
    // Makes a child window below the control's container, with the control's place, text, font and state.
    void createChild(const WindowShape& shape);
    // For windows of classes of our own, whose procedure is `peerProcedure`: called by it at the first
    // message.
    void adopt(HWND window);
    static bool registerClass(const char* name, UINT style, HBRUSH ground);
    static LRESULT CALLBACK peerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // Gives a fresh window its name and remembers the procedure of its class.
    void subclass(HWND window);

    // Makes one collected change.
    virtual void apply(Property property);
    // True for a property that must not wait.
    [[nodiscard]] virtual bool immediate(Property /*property*/) const { return false; }
    [[nodiscard]] virtual RECT windowRect() const;
    void place();
    // Sets the window text where it is another one.
    void setWindowText(const std::string& text);
    [[nodiscard]] std::string windowText() const;
    // The same where the user has typed it: collected changes wait.
    [[nodiscard]] std::string typedText();
    [[nodiscard]] HWND parentWindow() const;
    [[nodiscard]] bool busy() const { return busy_; }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    class Busy {
      public:
        explicit Busy(WindowPeer& peer) : peer_(peer), before_(peer.busy_) { peer.busy_ = true; }
        ~Busy() { peer_.busy_ = before_; }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

      private:
        WindowPeer& peer_;
        bool before_;
    };

  private:
    void forget();
    void askForPointer() const;
    [[nodiscard]] HWND topWindow() const;

    Control& control_;
    HWND window_ = nullptr;
    WNDPROC classProcedure_ = nullptr;
    unsigned dirty_ = 0;
    bool busy_ = false;
};

// Peers whose window is behind their control's state. A scan writes texts for every entry, while the eye
// needs them at most ten times a second.
void queuePaint(WindowPeer& peer);
void forgetPaint(WindowPeer& peer);

// Brings all windows up to date.
void flushPaints();
// The same, when the last time is at least a frame ago. Cheap enough to be called for every entry of a scan.
void flushDuePaints();

// A window was asked something by another thread, which will ask more: a reader of the screen goes through
// all controls.
void askedFromOutside();

}  // namespace bromvale
