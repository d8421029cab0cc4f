#pragma once
#include "platform/controls/control.h"

namespace bromvale {

// Push button; the "&" of its caption marks the access key.
class Button : public Control {
  public:
    Button(Form* form, std::string_view name) : Control(form, name, ControlKind::Button) {}
    std::function<void()> onClick;

    // The form's default button answers Return, its cancel button Escape.
    [[nodiscard]] bool isDefault() const { return default_; }
    [[nodiscard]] bool isCancel() const { return cancel_; }
    void setDefault(bool on) { default_ = on; }
    void setCancel(bool on) { cancel_ = on; }

    // The user clicks. Nothing happens on a button that cannot be reached.
    void userClick();

  private:
    bool default_ = false;
    bool cancel_ = false;
};

// Value 0 or 1. Every change of it runs onClick, made by the user or by code.
class CheckBox : public Control {
  public:
    CheckBox(Form* form, std::string_view name) : Control(form, name, ControlKind::CheckBox) {}
    std::function<void()> onClick;

    [[nodiscard]] int value() const { return value_; }
    void setValue(int value);
    void userClick();

  private:
    int value_ = 0;
};

// One of a group: the option buttons of the same container. Switching one on switches the others off and
// runs its onClick; switching one off runs nothing.
class OptionButton : public Control {
  public:
    OptionButton(Form* form, std::string_view name) : Control(form, name, ControlKind::OptionButton) {}
    std::function<void()> onClick;

    [[nodiscard]] bool value() const { return value_; }
    void setValue(bool value);
    void userClick();

  private:
    bool value_ = false;
};

}  // namespace bromvale
