#pragma once
#include "platform/controls/control.h"

namespace bromvale {

class Label;
class Button;
class CheckBox;
class OptionButton;
class TextBox;
class ComboBox;
class Frame;
class Line;
class Picture;
class ListView;
class ImageList;
class ListBar;
class StatusBar;
class ProgressBar;
class Timer;
class MenuItem;
class Socket;

// Does to a control what depends on its kind and is nothing of its own.
class ControlVisitor {
  public:
    virtual ~ControlVisitor() = default;
    virtual void visit(Form&) {}
    virtual void visit(Label&) {}
    virtual void visit(Button&) {}
    virtual void visit(CheckBox&) {}
    virtual void visit(OptionButton&) {}
    virtual void visit(TextBox&) {}
    virtual void visit(ComboBox&) {}
    virtual void visit(Frame&) {}
    virtual void visit(Line&) {}
    virtual void visit(Picture&) {}
    virtual void visit(ListView&) {}
    virtual void visit(ImageList&) {}
    virtual void visit(ListBar&) {}
    virtual void visit(StatusBar&) {}
    virtual void visit(ProgressBar&) {}
    virtual void visit(Timer&) {}
    virtual void visit(MenuItem&) {}
    virtual void visit(Socket&) {}
};

// Base of the class of each kind.
template <class Class, ControlKind number, class Base = Control>
class ControlOf : public Base {
  public:
    static constexpr ControlKind kKind = number;
    ControlOf(Form* form, std::string_view name) : Base(form, name, number) {}
    void accept(ControlVisitor& visitor) override { visitor.visit(static_cast<Class&>(*this)); }
};

// The control as one of that class; null where it is of another kind, or there is none.
template <class Class>
[[nodiscard]] Class* as(Control* control) {
    return control != nullptr && control->kind() == Class::kKind ? static_cast<Class*>(control) : nullptr;
}

// A group or page: holds other controls.
class Frame : public ControlOf<Frame, ControlKind::Frame> {
  public:
    using ControlOf::ControlOf;
    // Twips that what it holds needs; a frame that is smaller scrolls. 0, 0: it never does.
    [[nodiscard]] int contentWidth() const { return contentWidth_; }
    [[nodiscard]] int contentHeight() const { return contentHeight_; }
    void setContentSize(int width, int height) {
        if (contentWidth_ == width && contentHeight_ == height) return;
        contentWidth_ = width;
        contentHeight_ = height;
        notify(Property::Content);
    }

  private:
    int contentWidth_ = 0;
    int contentHeight_ = 0;
};

// A rule; see Place for its two points.
class Line : public ControlOf<Line, ControlKind::Line> {
  public:
    using ControlOf::ControlOf;
    [[nodiscard]] int x2() const { return left() + width(); }
    void setX2(int x2) { setWidth(x2 - left()); }
};

}  // namespace bromvale
