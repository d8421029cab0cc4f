// Text boxes and combo boxes.
#include "platform/win32/windows/colours.h"
#include "platform/win32/windows/combo_field.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

// Greyed: the face of buttons for a text that is only read, the colour of inactive borders for a field
// without use. That one has no text's colour as its pair, so in some schemes it takes the face, too.
HBRUSH greyed(HDC dc, bool readOnly) {
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    const COLORREF ground = GetSysColor(COLOR_INACTIVEBORDER);
    if (readOnly || !readable(text, ground)) return faceColours(dc);
    SetTextColor(dc, text);
    SetBkColor(dc, ground);
    return GetSysColorBrush(COLOR_INACTIVEBORDER);
}

class TextBoxPeer : public WindowPeer {
  public:
    explicit TextBoxPeer(TextBox& box) : WindowPeer(box), box_(box) {
        const DWORD lines = box.multiLine() ? ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL
                                            : static_cast<DWORD>(ES_AUTOHSCROLL);
        const DWORD reading = box.locked() ? ES_READONLY : 0u;
        createChild({"EDIT", WS_TABSTOP | ES_LEFT | lines | reading, WS_EX_CLIENTEDGE});
        const Busy here(*this);
        send(EM_LIMITTEXT, 0);
        setWindowText(box.text());
    }

    void command(UINT code) override {
        if (code == EN_CHANGE && !busy()) box_.userText(typedText());
    }

    HBRUSH colours(HDC dc, UINT) override {
        return box_.backColor() == BackColor::Greyed ? greyed(dc, box_.locked()) : nullptr;
    }

  protected:
    void apply(Property property) override {
        if (property == Property::Text) setWindowText(box_.text());
        if (property == Property::BackColor) WindowPeer::apply(property);
    }

  private:
    TextBox& box_;
};

class ComboBoxPeer : public WindowPeer {
  public:
    explicit ComboBoxPeer(ComboBox& box) : WindowPeer(box), box_(box) {
        createChild({"COMBOBOX", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL});
        nameComboField(window());
        const Busy here(*this);
        setHeight();
        fill();
        setWindowText(box.text());
        unmark();
    }

    void rescaled(const Scale& before) override {
        WindowPeer::rescaled(before);
        setHeight();
        place();
        unmark();
    }

    void command(UINT code) override {
        switch (code) {
            case CBN_SETFOCUS: box_.form()->userFocus(&box_); break;
            case CBN_EDITCHANGE:
                if (!busy()) box_.userText(typedText());
                break;
            case CBN_SELCHANGE:
                if (!busy()) box_.userChoose(static_cast<int>(send(CB_GETCURSEL)));
                break;
            default: break;
        }
    }

    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        // The edit field asks the box, which would hand the question on without saying whose it is.
        if ((message == WM_CTLCOLOREDIT || message == WM_CTLCOLORSTATIC) &&
            box_.backColor() == BackColor::Greyed) {
            return reinterpret_cast<LRESULT>(greyed(reinterpret_cast<HDC>(wParam), false));
        }
        if (message == WM_SIZE) {
            const LRESULT result = WindowPeer::userMessage(message, wParam, lParam);
            unmark();
            return result;
        }
        return WindowPeer::userMessage(message, wParam, lParam);
    }

    // An open list is closed by them.
    [[nodiscard]] bool keepsKey(WPARAM key, HWND) const override {
        return (key == VK_RETURN || key == VK_ESCAPE) && send(CB_GETDROPPEDSTATE) != 0;
    }

    HBRUSH colours(HDC dc, UINT) override {
        return box_.backColor() == BackColor::Greyed ? greyed(dc, false) : nullptr;
    }

  protected:
    void apply(Property property) override {
        switch (property) {
            case Property::Items:
                fill();
                setWindowText(box_.text());
                unmark();
                break;
            case Property::Text:
                setWindowText(box_.text());
                unmark();
                break;
            case Property::BackColor: WindowPeer::apply(property); break;
            default: break;
        }
    }

    // The window's height counts the opened list.
    [[nodiscard]] RECT windowRect() const override {
        constexpr int kVisibleEntries = 10;
        RECT rect = WindowPeer::windowRect();
        rect.bottom += (fontHeight(controlFont(scale())) + 1) * kVisibleEntries;
        return rect;
    }

  private:
    void setHeight() {
        constexpr int kFrame = 6;  // what the box adds to its edit field
        send(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), scale().pixels(box_.height()) - kFrame);
    }

    void fill() {
        send(CB_RESETCONTENT);
        for (int i = 0; i < box_.count(); ++i) {
            const std::string item = box_.item(i);
            send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
        }
    }

    // A box that is set or resized marks its whole text, as if it had the focus.
    void unmark() {
        if (window() != nullptr && !IsChild(window(), GetFocus())) send(CB_SETEDITSEL, 0, MAKELPARAM(-1, 0));
    }

    ComboBox& box_;
};

}  // namespace

void PeerMaker::visit(TextBox& box) {
    made = std::make_unique<TextBoxPeer>(box);
}
void PeerMaker::visit(ComboBox& box) {
    made = std::make_unique<ComboBoxPeer>(box);
}

}  // namespace bromvale
