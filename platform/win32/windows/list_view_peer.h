#pragma once
#include <vector>

#include "platform/controls/list_view.h"
#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/list_view_mouse.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

// The report list: a virtual one, whose rows stay in the control.
class ListViewPeer : public WindowPeer {
  public:
    explicit ListViewPeer(ListView& list);
    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool notification(NMHDR* header, LRESULT& result) override;
    void rescaled(const Scale& before) override;

  protected:
    void apply(Property property) override;

  private:
    [[nodiscard]] bool wantsFrame() const;
    LRESULT drawFrame(const NMCUSTOMDRAW& step);
    void showIcons();
    void showColumns();
    void showRows();
    void showColours();
    void showSelection();
    void showFocus();
    void readSelection();
    [[nodiscard]] int focusedRow(LPARAM states) const;
    [[nodiscard]] std::vector<int> shownSelection() const;
    [[nodiscard]] std::vector<int> wantedSelection() const;
    void setState(int row, UINT state, UINT mask) const;
    void readRow(const NMLISTVIEW& change);
    void readRange(const NMLVODSTATECHANGE& change);
    void giveText(NMLVDISPINFOA& info) const;
    [[nodiscard]] bool hiddenColumn(int index) const;
    LRESULT mouseMessage(const MouseEdge& edge, UINT message, WPARAM wParam, LPARAM lParam);

    ListView& list_;
    ReleaseCounter releases_;
    std::size_t columns_ = 0;
    bool framed_ = false;
};

}  // namespace bromvale
