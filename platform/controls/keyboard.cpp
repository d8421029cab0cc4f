#include <algorithm>

#include "base/text_case.h"
#include "platform/controls/button.h"
#include "platform/controls/form.h"
#include "platform/controls/text.h"

namespace bromvale {
namespace {

enum VirtualKey {
    kTab = 0x09,
    kReturn = 0x0D,
    kEscape = 0x1B,
    kLeft = 0x25,
    kUp = 0x26,
    kRight = 0x27,
    kDown = 0x28
};

bool takesFocus(ControlKind kind) {
    switch (kind) {
        case ControlKind::Button:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::TextBox:
        case ControlKind::ComboBox:
        case ControlKind::ListView:
        case ControlKind::ListBar: return true;
        default: return false;
    }
}

bool takesFocusNow(const Control& control) {
    return takesFocus(control.kind()) && control.tabIndex() >= 0 && control.reachable();
}

// The character behind the first single "&" of a caption, upper case; 0 for none. "&&" is a plain "&".
char accessKey(const Control& control) {
    if (control.kind() == ControlKind::TextBox || control.kind() == ControlKind::Menu) return 0;
    const std::string& caption = control.caption();
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] != '&') return upperCase(caption[i + 1]);
        ++i;
    }
    return 0;
}

void sortByTab(std::vector<Control*>& controls) {
    std::stable_sort(controls.begin(), controls.end(),
                     [](const Control* a, const Control* b) { return a->tabIndex() < b->tabIndex(); });
}

// The next one behind `tabIndex` in the order, or before it; round the end.
Control* neighbour(const std::vector<Control*>& order, int tabIndex, bool backwards) {
    if (order.empty()) return nullptr;
    if (backwards) {
        const auto before = [tabIndex](const Control* control) { return control->tabIndex() < tabIndex; };
        const auto found = std::find_if(order.rbegin(), order.rend(), before);
        return found == order.rend() ? order.back() : *found;
    }
    const auto behind = [tabIndex](const Control* control) { return control->tabIndex() > tabIndex; };
    const auto found = std::find_if(order.begin(), order.end(), behind);
    return found == order.end() ? order.front() : *found;
}

bool clickButton(Button* button, bool held) {
    if (!button || !button->reachable()) return false;
    if (!held) button->userClick();
    return true;
}

}  // namespace

Button* Form::defaultButton() const {
    for (Control* control : controls_) {
        if (control->kind() != ControlKind::Button) continue;
        if (auto* button = static_cast<Button*>(control); button->isDefault()) return button;
    }
    return nullptr;
}

Button* Form::cancelButton() const {
    for (Control* control : controls_) {
        if (control->kind() != ControlKind::Button) continue;
        if (auto* button = static_cast<Button*>(control); button->isCancel()) return button;
    }
    return nullptr;
}

// Of a group of option buttons only the chosen one is a stop, or the first while none is chosen.
bool Form::isTabStop(const Control& control) const {
    if (!takesFocusNow(control)) return false;
    if (control.kind() != ControlKind::OptionButton) return true;
    if (static_cast<const OptionButton&>(control).value()) return true;
    for (const Control* other : controls_) {
        if (other == &control || other->kind() != ControlKind::OptionButton || !takesFocusNow(*other))
            continue;
        if (other->container() != control.container()) continue;
        if (static_cast<const OptionButton*>(other)->value() || other->tabIndex() < control.tabIndex())
            return false;
    }
    return true;
}

std::vector<Control*> Form::tabOrder() const {
    std::vector<Control*> order;
    for (Control* control : controls_) {
        if (isTabStop(*control)) order.push_back(control);
    }
    sortByTab(order);
    return order;
}

bool Form::moveFocus(bool backwards) {
    const int from = focused_ ? focused_->tabIndex() : -1;
    Control* next = neighbour(tabOrder(), from, backwards);
    if (!next) return false;
    next->setFocus();
    return true;
}

// A control that was hidden or disabled hands its focus on, as the keyboard would otherwise be dead.
void Form::leaveUnreachable() {
    if (!loaded_ || unloading_ || !focused_ || focused_->reachable()) return;
    if (!moveFocus(false)) focused_ = nullptr;
}

bool Form::moveInGroup(bool backwards) {
    std::vector<Control*> group;
    for (Control* control : controls_) {
        if (control->kind() != ControlKind::OptionButton || !takesFocusNow(*control)) continue;
        if (control->container() == focused_->container()) group.push_back(control);
    }
    sortByTab(group);
    Control* next = neighbour(group, focused_->tabIndex(), backwards);
    if (!next) return false;
    next->setFocus();
    static_cast<OptionButton*>(next)->userClick();
    return true;
}

bool Form::useAccessKey(int key, bool held) {
    std::vector<Control*> order;
    for (Control* control : controls_) {
        if (control->tabIndex() < 0 || !control->reachable()) continue;
        if (const char own = accessKey(*control); own && own == static_cast<char>(key))
            order.push_back(control);
    }
    sortByTab(order);
    Control* chosen = neighbour(order, focused_ ? focused_->tabIndex() : -1, false);
    if (!chosen) return false;
    if (!takesFocus(chosen->kind())) {
        // A label or frame leads to the control behind it.
        Control* next = neighbour(tabOrder(), chosen->tabIndex(), false);
        if (next) next->setFocus();
        return next != nullptr;
    }
    chosen->setFocus();
    if (held || order.size() > 1) return true;  // several share the key: it only moves on
    if (chosen->kind() == ControlKind::Button) static_cast<Button*>(chosen)->userClick();
    if (chosen->kind() == ControlKind::CheckBox) static_cast<CheckBox*>(chosen)->userClick();
    if (chosen->kind() == ControlKind::OptionButton) static_cast<OptionButton*>(chosen)->userClick();
    return true;
}

bool Form::userKey(int key, bool shift, bool alt, bool held) {
    if (!loaded_ || !enabled()) return false;
    if (alt) return useAccessKey(key, held);
    const ControlKind where = focused_ ? focused_->kind() : ControlKind::Form;
    switch (key) {
        case kTab: return moveFocus(shift);
        case kReturn:
            if (where == ControlKind::Button) return clickButton(static_cast<Button*>(focused_), held);
            if (where == ControlKind::TextBox && static_cast<TextBox*>(focused_)->multiLine()) return false;
            return clickButton(defaultButton(), held);
        case kEscape: return clickButton(cancelButton(), held);
        case kLeft:
        case kUp: return where == ControlKind::OptionButton && moveInGroup(true);
        case kRight:
        case kDown: return where == ControlKind::OptionButton && moveInGroup(false);
        default: return false;
    }
}

}  // namespace bromvale
