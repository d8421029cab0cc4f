#include "platform/controls/button.h"

#include <utility>

#include "platform/controls/form.h"
#include "platform/events.h"

namespace bromvale {

void Button::userClick() {
    if (reachable()) dispatchUserEvent(onClick);
}

void CheckBox::setValue(int value) {
    // Settings are 16-bit numbers that are compared with 1, so any other number means off.
    const int wanted = value == 1 ? 1 : 0;
    if (value_ == wanted) return;
    value_ = wanted;
    notify(Property::Value);
    if (onClick) onClick();
}

void CheckBox::userClick() {
    if (reachable()) dispatchUserEvent([this] { setValue(1 - value_); });
}

// The control as a button of the same group; null for any other.
OptionButton* OptionButton::inGroup(Control* control) const {
    auto* button = as<OptionButton>(control);
    return button && button->container() == container() ? button : nullptr;
}

void OptionButton::setValue(bool value) {
    if (value_ == value) return;
    if (value) {
        for (Control* control : form()->controls()) {
            if (OptionButton* other = inGroup(control); other && other != this) other->setValue(false);
        }
    }
    value_ = value;
    notify(Property::Value);
    if (value && onClick) onClick();
}

bool OptionButton::isTabStop() const {
    if (!takesFocusNow() || value_) return takesFocusNow();
    for (Control* control : form()->controls()) {
        const OptionButton* other = inGroup(control);
        if (!other || other == this || !other->takesFocusNow()) continue;
        if (other->value_ || other->tabIndex() < tabIndex()) return false;
    }
    return true;
}

bool OptionButton::userArrow(bool backwards) {
    std::vector<Control*> group;
    for (Control* control : form()->controls()) {
        if (inGroup(control) && control->takesFocusNow()) group.push_back(control);
    }
    Control* next = neighbourInTabOrder(std::move(group), tabIndex(), backwards);
    if (!next) return false;
    next->setFocus();
    next->userClick();
    return true;
}

void OptionButton::userClick() {
    if (reachable()) dispatchUserEvent([this] { setValue(true); });
}

}  // namespace bromvale
