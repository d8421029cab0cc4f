#pragma once
#include "platform/controls/form.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

// The window of a form.
class FormPeer : public WindowPeer {
  public:
    explicit FormPeer(Form& form);
    void changed(Property property) override;
    void takeFocus() override {}
    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] Scale scale() const override { return scale_; }
    bool scrollBy(POINT pixels) override;

  protected:
    [[nodiscard]] RECT windowRect() const override;

  private:
    void create();
    void showIcon();
    void rescale(int dpi, const RECT& suggested);
    void tellControls(UINT message, WPARAM wParam, LPARAM lParam);
    void show();
    void showState();
    void report();
    void focusControl();
    void mouseMoved(LPARAM lParam);

    Form& form_;
    Scale scale_;
    bool shown_ = false;
};

}  // namespace bromvale
