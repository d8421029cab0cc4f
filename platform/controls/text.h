#pragma once
#include <vector>

#include "platform/controls/control_of.h"

namespace bromvale {

class Label : public ControlOf<Label, ControlKind::Label> {
  public:
    using ControlOf::ControlOf;
    [[nodiscard]] Alignment alignment() const { return alignment_; }
    void setAlignment(Alignment alignment) { alignment_ = alignment; }
    // Face of the text where it isn't the form's own; empty for that.
    [[nodiscard]] const std::string& font() const { return font_; }
    void setFont(std::string_view font) { font_ = font; }
    // Changes of the text are told to those who don't see them; see Announcements.
    [[nodiscard]] bool announced() const { return announced_; }
    void setAnnounced(bool on) { announced_ = on; }

  private:
    Alignment alignment_ = Alignment::Left;
    std::string font_;
    bool announced_ = false;
};

// What boxes with a text of the user's have in common.
class EditedText : public Control {
  public:
    using Control::Control;
    std::function<void()> onChange;  // the text changed, by typing or by code

    [[nodiscard]] const std::string& text() const { return text_; }
    void setText(std::string_view text);
    // The user typed: the box shows `text` already.
    void userText(std::string_view text);
    [[nodiscard]] bool takesFocus() const override { return true; }
    // The label right before the box names it: Windows itself goes by that order of the windows.
    [[nodiscard]] std::string spokenName() const override;

  protected:
    std::string text_;
    bool locked_ = false;
};

// Lines are separated by CR LF.
class TextBox : public ControlOf<TextBox, ControlKind::TextBox, EditedText> {
  public:
    using ControlOf::ControlOf;
    [[nodiscard]] bool multiLine() const { return multiLine_; }
    void setMultiLine(bool on) { multiLine_ = on; }
    [[nodiscard]] bool locked() const { return locked_; }
    void setLocked(bool on) { locked_ = on; }
    [[nodiscard]] bool hasAccessKey() const override { return false; }
    [[nodiscard]] bool keepsReturn() const override { return multiLine_; }

  private:
    bool multiLine_ = false;
};

// A drop-down list with an edit field: any text can be typed. Entries count from 0.
class ComboBox : public ControlOf<ComboBox, ControlKind::ComboBox, EditedText> {
  public:
    using ControlOf::ControlOf;
    std::function<void()> onClick;  // the user chose an entry; runs after the text has changed

    void addItem(std::string_view item);
    // Inserts at an explicit index; Failure 5 beyond the end.
    void addItem(std::string_view item, int index);
    void clearItems();
    [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
    // Empty beyond the end.
    [[nodiscard]] std::string item(int index) const;
    [[nodiscard]] bool sorted() const { return sorted_; }
    void setSorted(bool on) { sorted_ = on; }
    void userChoose(int index);

  private:
    std::vector<std::string> items_;
    bool sorted_ = false;
};

}  // namespace bromvale
