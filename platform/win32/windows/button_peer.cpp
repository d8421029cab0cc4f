// What Windows' button class draws: buttons, check boxes and option buttons; frames have a file of their own.
#include "platform/win32/windows/colours.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

class ButtonPeer : public WindowPeer {
  public:
    explicit ButtonPeer(Button& button) : WindowPeer(button), button_(button) {
        const DWORD kind = button.isDefault() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        createChild({"BUTTON", WS_TABSTOP | BS_NOTIFY | kind});
    }

    void command(UINT code) override {
        if (code == BN_CLICKED) button_.userClick();
    }

    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        // Return clicks the button that has the focus, so that one wears the thick frame meanwhile.
        if (message == WM_SETFOCUS) markDefault(&button_);
        if (message == WM_KILLFOCUS) markDefault(button_.form()->defaultButton());
        return WindowPeer::userMessage(message, wParam, lParam);
    }

  private:
    void markDefault(const Button* marked) const {
        for (Control* other : button_.form()->controls()) {
            if (as<Button>(other) == nullptr || other->peer() == nullptr) continue;
            const HWND window = other->peer()->window();
            const LONG wanted = other == marked ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
            if (window == nullptr || (GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK) == wanted) continue;
            SendMessageA(window, BM_SETSTYLE, static_cast<WPARAM>(wanted), TRUE);
        }
    }

    Button& button_;
};

// Check boxes and option buttons: the mark follows the control's state, never the click itself.
template <class Box>
class MarkPeer : public WindowPeer {
  public:
    MarkPeer(Box& box, DWORD kind) : WindowPeer(box), box_(box) {
        createChild({"BUTTON", WS_TABSTOP | BS_NOTIFY | kind});
        apply(Property::Value);
    }

    void command(UINT code) override {
        // An option button reports a click when it gets the keyboard.
        if (code == BN_CLICKED && !gettingFocus_) box_.userClick();
    }

    HBRUSH colours(HDC dc, UINT) override { return faceColours(dc); }

    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_SETFOCUS) return WindowPeer::userMessage(message, wParam, lParam);
        gettingFocus_ = true;
        const LRESULT result = WindowPeer::userMessage(message, wParam, lParam);
        gettingFocus_ = false;
        return result;
    }

  protected:
    void apply(Property property) override {
        WindowPeer::apply(property);
        if (property != Property::Value) return;
        const WPARAM wanted = box_.value() ? BST_CHECKED : BST_UNCHECKED;
        if (send(BM_GETCHECK) != static_cast<LRESULT>(wanted)) send(BM_SETCHECK, wanted);
    }

    [[nodiscard]] bool immediate(Property property) const override { return property == Property::Value; }

    // A text that misses its width by a little, as some fonts and scalings make it, takes it from beside.
    [[nodiscard]] RECT windowRect() const override {
        constexpr int kMark = 19;  // pixels at 96 DPI: the box and the gap behind it
        RECT rect = WindowPeer::windowRect();
        const LONG width = rect.right - rect.left;
        const LONG missing = scale().scaled(kMark) + textWidth(controlFont(scale()), box_.caption()) - width;
        if (missing > 0 && missing <= width / 6) rect.right += missing;
        return rect;
    }

  private:
    Box& box_;
    bool gettingFocus_ = false;
};

}  // namespace

void PeerMaker::visit(Button& button) {
    made = std::make_unique<ButtonPeer>(button);
}

void PeerMaker::visit(CheckBox& box) {
    made = std::make_unique<MarkPeer<CheckBox>>(box, BS_CHECKBOX);
}

void PeerMaker::visit(OptionButton& button) {
    made = std::make_unique<MarkPeer<OptionButton>>(button, BS_RADIOBUTTON);
}

}  // namespace bromvale
