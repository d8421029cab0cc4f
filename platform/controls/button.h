#pragma once
#include "platform/controls/control_of.h"

namespace bromvale {

// Push button; the "&" of its caption marks the access key.
class Button : public ControlOf<Button, ControlKind::Button> {
  public:
    using ControlOf::ControlOf;
    std::function<void()> onClick;

    // The form's default button answers Return, its cancel button Escape.
    [[nodiscard]] bool isDefault() const { return default_; }
    [[nodiscard]] bool isCancel() const { return cancel_; }
    void setDefault(bool on) { default_ = on; }
    void setCancel(bool on) { cancel_ = on; }

    [[nodiscard]] bool takesFocus() const override { return true; }
    void userClick() override;

  private:
    bool default_ = false;
    bool cancel_ = false;
};

// Value 0 or 1. Every change of it runs onClick, made by the user or by code.
class CheckBox : public ControlOf<CheckBox, ControlKind::CheckBox> {
  public:
    using ControlOf::ControlOf;
    std::function<void()> onClick;

    [[nodiscard]] int value() const { return value_; }
    void setValue(int value);
    [[nodiscard]] bool takesFocus() const override { return true; }
    void userClick() override;

  private:
    int value_ = 0;
};

// One of a group: the option buttons of the same container. Switching one on switches the others off and
// runs its onClick; switching one off runs nothing.
class OptionButton : public ControlOf<OptionButton, ControlKind::OptionButton> {
  public:
    using ControlOf::ControlOf;
    std::function<void()> onClick;

    [[nodiscard]] bool value() const { return value_; }
    void setValue(bool value);
    [[nodiscard]] bool takesFocus() const override { return true; }
    // Of a group only the chosen one is a stop, or the first while none is chosen.
    [[nodiscard]] bool isTabStop() const override;
    void userClick() override;
    bool userArrow(bool backwards) override;

  private:
    [[nodiscard]] OptionButton* inGroup(Control* control) const;
    bool value_ = false;
};

}  // namespace bromvale
