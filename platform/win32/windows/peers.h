#pragma once
// Makers of the peers, one a kind of control. Each returns with its window in the control's state.
#include "platform/controls.h"

namespace bromvale {

[[nodiscard]] std::unique_ptr<ControlPeer> makeLabel(Label& label);
[[nodiscard]] std::unique_ptr<ControlPeer> makePicture(Picture& picture);
[[nodiscard]] std::unique_ptr<ControlPeer> makeLine(Line& line);
[[nodiscard]] std::unique_ptr<ControlPeer> makeTextBox(TextBox& box);
[[nodiscard]] std::unique_ptr<ControlPeer> makeComboBox(ComboBox& box);
[[nodiscard]] std::unique_ptr<ControlPeer> makeButton(Button& button);
[[nodiscard]] std::unique_ptr<ControlPeer> makeCheckBox(CheckBox& box);
[[nodiscard]] std::unique_ptr<ControlPeer> makeOptionButton(OptionButton& button);
[[nodiscard]] std::unique_ptr<ControlPeer> makeFrame(Frame& frame);
[[nodiscard]] std::unique_ptr<ControlPeer> makeStatusBar(StatusBar& bar);
[[nodiscard]] std::unique_ptr<ControlPeer> makeProgressBar(ProgressBar& bar);
[[nodiscard]] std::unique_ptr<ControlPeer> makeTimer(Timer& timer);
[[nodiscard]] std::unique_ptr<ControlPeer> makeListView(ListView& list);
[[nodiscard]] std::unique_ptr<ControlPeer> makeListBar(ListBar& bar);

}  // namespace bromvale
