#pragma once
#include "platform/controls.h"

namespace bromvale {

// Makes the peer of a control, with its window in the control's state; each kind's is defined beside that
// peer. Of the other kinds nothing is to be seen.
class PeerMaker : public ControlVisitor {
  public:
    std::unique_ptr<ControlPeer> made;

    using ControlVisitor::visit;
    void visit(Form& form) override;
    void visit(Label& label) override;
    void visit(Button& button) override;
    void visit(CheckBox& box) override;
    void visit(OptionButton& button) override;
    void visit(TextBox& box) override;
    void visit(ComboBox& box) override;
    void visit(Frame& frame) override;
    void visit(Line& line) override;
    void visit(Picture& picture) override;
    void visit(ListView& list) override;
    void visit(ListBar& bar) override;
    void visit(StatusBar& bar) override;
    void visit(ProgressBar& bar) override;
    void visit(Timer& timer) override;
};

}  // namespace bromvale
