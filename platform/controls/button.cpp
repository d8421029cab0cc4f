#include "platform/controls/button.h"

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

void OptionButton::setValue(bool value) {
    if (value_ == value) return;
    if (value) {
        for (Control* other : form()->controls()) {
            if (other == this || other->kind() != ControlKind::OptionButton) continue;
            if (other->container() == container()) static_cast<OptionButton*>(other)->setValue(false);
        }
    }
    value_ = value;
    notify(Property::Value);
    if (value && onClick) onClick();
}

void OptionButton::userClick() {
    if (reachable()) dispatchUserEvent([this] { setValue(true); });
}

}  // namespace bromvale
