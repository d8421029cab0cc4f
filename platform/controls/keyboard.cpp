#include <algorithm>
#include <iterator>
#include <utility>

#include "base/text_case.h"
#include "platform/controls/button.h"
#include "platform/controls/form.h"
#include "platform/controls/virtual_keys.h"

namespace bromvale {
namespace {

// The character behind the first single "&" of a caption, upper case; 0 for none. "&&" is a plain "&".
char accessKey(const Control& control) {
    if (!control.hasAccessKey()) return 0;
    const std::string& caption = control.caption();
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] != '&') return upperCase(caption[i + 1]);
        ++i;
    }
    return 0;
}

bool clickButton(Button* button, bool held) {
    if (!button || !button->reachable()) return false;
    if (!held) button->userClick();
    return true;
}

Button* findButton(const std::vector<Control*>& controls, bool (Button::*wanted)() const) {
    for (Control* control : controls) {
        auto* button = as<Button>(control);
        if (button && (button->*wanted)()) return button;
    }
    return nullptr;
}

}  // namespace

Control* neighbourInTabOrder(std::vector<Control*> controls, int tabIndex, bool backwards) {
    if (controls.empty()) return nullptr;
    std::ranges::stable_sort(controls, {}, &Control::tabIndex);
    if (backwards) {
        const auto before = [tabIndex](const Control* control) { return control->tabIndex() < tabIndex; };
        const auto found = std::find_if(controls.rbegin(), controls.rend(), before);
        return found == controls.rend() ? controls.back() : *found;
    }
    const auto behind = [tabIndex](const Control* control) { return control->tabIndex() > tabIndex; };
    const auto found = std::ranges::find_if(controls, behind);
    return found == controls.end() ? controls.front() : *found;
}

Button* Form::defaultButton() const {
    return findButton(controls_, &Button::isDefault);
}

Button* Form::cancelButton() const {
    return findButton(controls_, &Button::isCancel);
}

std::vector<Control*> Form::tabStops() const {
    std::vector<Control*> stops;
    std::ranges::copy_if(controls_, std::back_inserter(stops), &Control::isTabStop);
    return stops;
}

bool Form::moveFocus(bool backwards) {
    const int from = focused_ ? focused_->tabIndex() : -1;
    Control* next = neighbourInTabOrder(tabStops(), from, backwards);
    if (!next) return false;
    next->setFocus();
    return true;
}

// A control that was hidden or disabled hands its focus on, as the keyboard would otherwise be dead.
void Form::leaveUnreachable() {
    if (!loaded_ || unloading_ || !focused_ || focused_->reachable()) return;
    if (!moveFocus(false)) focused_ = nullptr;
}

bool Form::useAccessKey(int key, bool held) {
    std::vector<Control*> sharing;
    for (Control* control : controls_) {
        if (control->tabIndex() < 0 || !control->reachable()) continue;
        if (const char own = accessKey(*control); own && own == static_cast<char>(key))
            sharing.push_back(control);
    }
    const bool alone = sharing.size() == 1;  // a key that several share only moves on
    Control* chosen = neighbourInTabOrder(std::move(sharing), focused_ ? focused_->tabIndex() : -1, false);
    if (!chosen) return false;
    if (!chosen->takesFocus()) {
        // A label or frame leads to the control behind it.
        Control* next = neighbourInTabOrder(tabStops(), chosen->tabIndex(), false);
        if (next) next->setFocus();
        return next != nullptr;
    }
    chosen->setFocus();
    if (alone && !held) chosen->userClick();
    return true;
}

bool Form::openContextMenu(bool held) {
    if (!focused_ || !focused_->hasContextMenu()) return false;
    if (!held) focused_->userContextMenu();
    return true;
}

bool Form::userKey(int key, bool shift, bool alt, bool held) {
    if (!loaded_ || !enabled()) return false;
    if (alt) return useAccessKey(key, held);
    switch (key) {
        case kTab: return moveFocus(shift);
        case kReturn: {
            if (focused_ && focused_->keepsReturn()) return false;
            auto* own = as<Button>(focused_);
            return clickButton(own ? own : defaultButton(), held);
        }
        case kEscape: return clickButton(cancelButton(), held);
        case kMenuKey: return openContextMenu(held);
        case kF10: return shift && openContextMenu(held);
        case kLeft:
        case kUp: return focused_ && focused_->userArrow(true);
        case kRight:
        case kDown: return focused_ && focused_->userArrow(false);
        default: return false;
    }
}

}  // namespace bromvale
