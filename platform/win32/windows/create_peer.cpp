#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/form_peer.h"
#include "platform/win32/windows/peers.h"

namespace bromvale {

std::unique_ptr<ControlPeer> createPeer(Control& control) {
    loadCommonControls();
    switch (control.kind()) {
        case ControlKind::Form: return std::make_unique<FormPeer>(static_cast<Form&>(control));
        case ControlKind::Label: return makeLabel(static_cast<Label&>(control));
        case ControlKind::Button: return makeButton(static_cast<Button&>(control));
        case ControlKind::CheckBox: return makeCheckBox(static_cast<CheckBox&>(control));
        case ControlKind::OptionButton: return makeOptionButton(static_cast<OptionButton&>(control));
        case ControlKind::TextBox: return makeTextBox(static_cast<TextBox&>(control));
        case ControlKind::ComboBox: return makeComboBox(static_cast<ComboBox&>(control));
        case ControlKind::Frame: return makeFrame(static_cast<Frame&>(control));
        case ControlKind::Line: return makeLine(static_cast<Line&>(control));
        case ControlKind::Picture: return makePicture(static_cast<Picture&>(control));
        case ControlKind::ListView: return makeListView(static_cast<ListView&>(control));
        case ControlKind::ListBar: return makeListBar(static_cast<ListBar&>(control));
        case ControlKind::StatusBar: return makeStatusBar(static_cast<StatusBar&>(control));
        case ControlKind::ProgressBar: return makeProgressBar(static_cast<ProgressBar&>(control));
        case ControlKind::Timer: return makeTimer(static_cast<Timer&>(control));
        // Nothing of them is to be seen.
        case ControlKind::ImageList:
        case ControlKind::Menu:
        case ControlKind::Socket: return nullptr;
    }
    return nullptr;
}

}  // namespace bromvale
