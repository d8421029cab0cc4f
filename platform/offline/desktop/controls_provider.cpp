// The offline side of the controls and their screen: nothing is to be seen, menus are recorded and the
// machine's user chooses.
#include "platform/controls.h"
#include "platform/offline/machine.h"
#include "platform/screen.h"

namespace bromvale {
namespace {

std::string withoutAmpersand(std::string_view caption) {
    std::string text(caption);
    std::erase(text, '&');
    return text;
}

bool chooses(const MenuItem& item, const std::string& choice) {
    return item.name() == choice || withoutAmpersand(item.caption()) == choice;
}

MenuItem* takeChoice(const MenuItem& menu) {
    auto& choices = offline::machine().menuChoices;
    std::string choice;
    if (!choices.empty()) {
        choice = choices.front();
        choices.pop_front();
    } else if (offline::machine().askForMenuChoice) {
        choice = offline::machine().askForMenuChoice();
    }
    if (choice.empty()) return nullptr;
    for (MenuItem* item : menu.children()) {
        if (chooses(*item, choice) && item->enabled() && item->visible()) return item;
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<ControlPeer> createPeer(Control&) {
    return nullptr;
}

HICON loadResourceIcon(int resourceId, int pixels) {
    return reinterpret_cast<HICON>(static_cast<std::intptr_t>(resourceId * 1000 + pixels));
}

Scale systemScale() {
    return Scale(offline::machine().screen.dpi);
}
int screenWidth() {
    return systemScale().twips(offline::machine().screen.width);
}
int screenHeight() {
    return systemScale().twips(offline::machine().screen.height);
}

// One screen, all of it free.
ScreenArea workingArea(int, int) {
    return {0, 0, screenWidth(), screenHeight()};
}

RoomForWindow roomFor(const Form&) {
    return {screenWidth(), screenHeight()};
}

// Border and caption of the classic look at 96 DPI.
FrameSize frameSize(BorderStyle style) {
    switch (style) {
        case BorderStyle::Sizable: return {120, 405};
        case BorderStyle::FixedDialog: return {90, 375};
        case BorderStyle::FixedNoControls: return {90, 90};
    }
    return {};
}

void showPopupMenu(Form&, MenuItem& menu, const MenuItem* defaultItem, const ListView*) {
    std::string captions;
    for (const MenuItem* item : menu.children()) {
        if (!item->visible()) continue;
        if (!captions.empty()) captions += " | ";
        captions += item->caption();
    }
    MenuItem* chosen = takeChoice(menu);
    offline::machine().events.record({offline::EventKind::Menu, captions,
                                      defaultItem != nullptr ? defaultItem->caption() : std::string(), 0,
                                      chosen != nullptr});
    if (chosen != nullptr) chosen->userChoose();
}

}  // namespace bromvale
