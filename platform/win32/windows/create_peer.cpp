#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/form_peer.h"
#include "platform/win32/windows/peers.h"

namespace bromvale {

namespace {

// Of the other kinds nothing is to be seen.
class PeerMaker : public ControlVisitor {
  public:
    std::unique_ptr<ControlPeer> made;

    using ControlVisitor::visit;
    void visit(Form& form) override { made = std::make_unique<FormPeer>(form); }
    void visit(Label& control) override { made = makeLabel(control); }
    void visit(Button& control) override { made = makeButton(control); }
    void visit(CheckBox& control) override { made = makeCheckBox(control); }
    void visit(OptionButton& control) override { made = makeOptionButton(control); }
    void visit(TextBox& control) override { made = makeTextBox(control); }
    void visit(ComboBox& control) override { made = makeComboBox(control); }
    void visit(Frame& control) override { made = makeFrame(control); }
    void visit(Line& control) override { made = makeLine(control); }
    void visit(Picture& control) override { made = makePicture(control); }
    void visit(ListView& control) override { made = makeListView(control); }
    void visit(ListBar& control) override { made = makeListBar(control); }
    void visit(StatusBar& control) override { made = makeStatusBar(control); }
    void visit(ProgressBar& control) override { made = makeProgressBar(control); }
    void visit(Timer& control) override { made = makeTimer(control); }
};

}  // namespace

std::unique_ptr<ControlPeer> createPeer(Control& control) {
    loadCommonControls();
    PeerMaker maker;
    control.accept(maker);
    return std::move(maker.made);
}

}  // namespace bromvale
