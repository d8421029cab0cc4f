// Labels, pictures and lines: what only shows something.
#include "platform/win32/system/icons.h"
#include "platform/win32/windows/announcer.h"
#include "platform/win32/windows/buffered_paint.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

// A static control whose content is painted here in one piece. Windows' own painting of a text flickers when
// it changes as often as a scan does it.
class PaintedPeer : public WindowPeer {
  public:
    using WindowPeer::WindowPeer;

    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_ERASEBKGND: return 1;
            case WM_ENABLE:
            case WM_SYSCOLORCHANGE:
            case WM_SIZE: InvalidateRect(window(), nullptr, FALSE); return 0;
            case WM_SETTEXT: {
                const LRESULT result = DefWindowProcA(window(), message, wParam, lParam);
                InvalidateRect(window(), nullptr, FALSE);
                return result;
            }
            case WM_PAINT: {
                const BufferedPaint canvas(window());
                FillRect(canvas.dc(), &canvas.area(), GetSysColorBrush(COLOR_BTNFACE));
                paint(canvas.dc(), canvas.area());
                return 0;
            }
            default: return WindowPeer::userMessage(message, wParam, lParam);
        }
    }

  protected:
    virtual void paint(HDC dc, const RECT& area) = 0;
};

class LabelPeer : public PaintedPeer {
  public:
    explicit LabelPeer(Label& label) : PaintedPeer(label), label_(label) {
        // Captions of the design may mark an access key; texts that come later are data.
        if (label.caption().find('&') == std::string::npos) prefix_ = DT_NOPREFIX;
        createChild({"STATIC", static_cast<DWORD>(SS_LEFT | (prefix_ != 0 ? SS_NOPREFIX : 0))});
    }
    ~LabelPeer() override { forgetAnnouncement(label_); }
    LabelPeer(const LabelPeer&) = delete;
    LabelPeer& operator=(const LabelPeer&) = delete;

  protected:
    void apply(Property property) override {
        PaintedPeer::apply(property);
        const RECT wanted = windowRect();
        if (property == Property::Caption && !EqualRect(&wanted, &placed_)) place();
        if (property == Property::Caption && label_.announced()) announce(label_);
    }

    // A label of one line that misses its width by a little, as some fonts and screens make it, takes it from
    // beside.
    [[nodiscard]] RECT windowRect() const override {
        RECT rect = PaintedPeer::windowRect();
        const HFONT font = fontOfFace(label_.font(), scale());
        const LONG width = rect.right - rect.left;
        const LONG missing = textWidth(font, label_.caption()) - width;
        if (missing > 0 && missing <= width / 6 && rect.bottom - rect.top < 2 * fontHeight(font)) {
            if (label_.alignment() != Alignment::Left) rect.left -= missing;
            if (label_.alignment() != Alignment::Right) rect.right += missing;
        }
        placed_ = rect;
        return rect;
    }

    void paint(HDC dc, const RECT& area) override {
        const HGDIOBJ old = SelectObject(dc, fontOfFace(label_.font(), scale()));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(label_.enabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
        UINT format = DT_WORDBREAK | DT_EXPANDTABS | prefix_;
        if (label_.alignment() == Alignment::Right) format |= DT_RIGHT;
        if (label_.alignment() == Alignment::Centre) format |= DT_CENTER;
        RECT text = area;
        const std::string shown = windowText();
        DrawTextA(dc, shown.c_str(), static_cast<int>(shown.size()), &text, format);
        SelectObject(dc, old);
    }

  private:
    Label& label_;
    UINT prefix_ = 0;
    mutable RECT placed_{};
};

class PicturePeer : public PaintedPeer {
  public:
    explicit PicturePeer(Picture& picture) : PaintedPeer(picture), picture_(picture) {
        createChild({"STATIC", SS_LEFT});
    }

  protected:
    void apply(Property property) override {
        PaintedPeer::apply(property);
        if (property == Property::Value) InvalidateRect(window(), nullptr, FALSE);
    }

    void paint(HDC dc, const RECT&) override {
        if (picture_.images() == nullptr || picture_.index() == 0) return;
        const ImageList& images = *picture_.images();
        drawIcon(dc, images.resourceId(picture_.index()), {0, 0}, scale().scaled(images.size()));
    }

  private:
    Picture& picture_;
};

// A rule has the thickness of its two edges, whatever its points say.
class LinePeer : public WindowPeer {
  public:
    explicit LinePeer(Line& line) : WindowPeer(line) {
        const bool upright = line.width() == 0;
        createChild({"STATIC", static_cast<DWORD>(upright ? SS_ETCHEDVERT : SS_ETCHEDHORZ)});
        place();  // the class makes a new window longer by its edges
    }

  protected:
    [[nodiscard]] RECT windowRect() const override {
        constexpr int kThickness = 2;
        RECT rect = WindowPeer::windowRect();
        if (rect.right - rect.left < kThickness) rect.right = rect.left + kThickness;
        if (rect.bottom - rect.top < kThickness) rect.bottom = rect.top + kThickness;
        return rect;
    }
};

}  // namespace

void PeerMaker::visit(Label& label) {
    made = std::make_unique<LabelPeer>(label);
}
void PeerMaker::visit(Picture& picture) {
    made = std::make_unique<PicturePeer>(picture);
}
void PeerMaker::visit(Line& line) {
    made = std::make_unique<LinePeer>(line);
}

}  // namespace bromvale
