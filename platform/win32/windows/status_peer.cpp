// Status bar, progress bar and timer.
#include <algorithm>

#include "platform/win32/windows/accessible_parts.h"
#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

class StatusBarPeer : public WindowPeer, private AccessibleParts {
  public:
    explicit StatusBarPeer(StatusBar& bar) : WindowPeer(bar), bar_(bar) {
        createChild({STATUSCLASSNAMEA, CCS_NOPARENTALIGN | CCS_NORESIZE | SBARS_SIZEGRIP | WS_CLIPSIBLINGS});
        apply(Property::Items);
    }

    void rescaled(const Scale& before) override {
        WindowPeer::rescaled(before);
        apply(Property::Items);
    }

  protected:
    void apply(Property property) override {
        if (property != Property::Items) return;
        const std::vector<StatusBar::Panel>& panels = bar_.panels();
        std::vector<int> edges;
        int edge = 0;
        for (const StatusBar::Panel& panel : panels) edges.push_back(scale().pixels(edge += panel.width));
        // The last panel fills the bar.
        if (!edges.empty()) edges.back() = -1;
        if (edges != edges_) {
            edges_ = edges;
            send(SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
        }
        texts_.resize(panels.size());
        for (std::size_t i = 0; i < panels.size(); ++i) {
            // A tab would centre what follows it.
            std::string text = panels[i].text;
            std::replace(text.begin(), text.end(), '\t', ' ');
            if (texts_[i] == text) continue;
            texts_[i] = text;
            send(SB_SETTEXTA, i, reinterpret_cast<LPARAM>(text.c_str()));
        }
    }

    // The bar stays at the bottom of its window with the height that it was designed with.
    [[nodiscard]] RECT windowRect() const override {
        RECT area{};
        GetClientRect(parentWindow(), &area);
        area.top = area.bottom - scale().pixels(bar_.height());
        return area;
    }

    LRESULT accessible(WPARAM wParam, LPARAM lParam) override {
        flush();
        return tellsParts(window(), count()) ? 0 : accessible_.answer(window(), *this, wParam, lParam);
    }

  private:
    [[nodiscard]] int count() const override { return static_cast<int>(bar_.panels().size()); }
    [[nodiscard]] AccessiblePart part(int number) const override {
        AccessiblePart told;
        told.state = STATE_SYSTEM_READONLY;
        told.role = number == 0 ? ROLE_SYSTEM_STATUSBAR : ROLE_SYSTEM_STATICTEXT;
        told.name = number == 0 ? bar_.spokenName() : bar_.panelText(number);
        if (number == 0) {
            GetClientRect(window(), &told.place);
        } else {
            send(SB_GETRECT, static_cast<WPARAM>(number - 1), reinterpret_cast<LPARAM>(&told.place));
        }
        MapWindowPoints(window(), nullptr, reinterpret_cast<POINT*>(&told.place), 2);
        return told;
    }

    StatusBar& bar_;
    AccessibleWindow accessible_;
    std::vector<int> edges_;
    std::vector<std::string> texts_;
};

class ProgressBarPeer : public WindowPeer {
  public:
    explicit ProgressBarPeer(ProgressBar& bar) : WindowPeer(bar), bar_(bar) {
        createChild({PROGRESS_CLASSA, WS_CLIPSIBLINGS});
        setWindowText(bar.spokenName());  // never shown; assistive tools read it
        apply(Property::Range);
        apply(Property::Value);
    }

  protected:
    void apply(Property property) override {
        if (property == Property::Range)
            send(PBM_SETRANGE32, static_cast<WPARAM>(bar_.minimum()), bar_.maximum());
        if (property == Property::Value || property == Property::Range) {
            send(PBM_SETPOS, static_cast<WPARAM>(bar_.value()));
        }
    }

  private:
    ProgressBar& bar_;
};

// No window of its own: a timer of the thread, found again by its number.
class TimerPeer : public ControlPeer {
  public:
    explicit TimerPeer(Timer& timer) : timer_(timer) { start(); }
    ~TimerPeer() override { stop(); }
    TimerPeer(const TimerPeer&) = delete;
    TimerPeer& operator=(const TimerPeer&) = delete;

    void changed(Property property) override {
        if (property == Property::Enabled || property == Property::Interval) start();
    }

  private:
    static inline std::vector<TimerPeer*> running;

    static void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD) {
        for (TimerPeer* peer : running) {
            if (peer->id_ != id) continue;
            guarded([peer] { peer->timer_.tick(); });
            return;
        }
    }

    void start() {
        stop();
        if (!timer_.enabled() || timer_.interval() == 0) return;
        id_ = SetTimer(nullptr, 0, timer_.interval(), onTick);
        if (id_ != 0) running.push_back(this);
    }

    void stop() {
        if (id_ == 0) return;
        KillTimer(nullptr, id_);
        std::erase(running, this);
        id_ = 0;
    }

    Timer& timer_;
    UINT_PTR id_ = 0;
};

}  // namespace

void PeerMaker::visit(StatusBar& bar) {
    made = std::make_unique<StatusBarPeer>(bar);
}
void PeerMaker::visit(ProgressBar& bar) {
    made = std::make_unique<ProgressBarPeer>(bar);
}
void PeerMaker::visit(Timer& timer) {
    made = std::make_unique<TimerPeer>(timer);
}

}  // namespace bromvale
