#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/window_handle.h"

namespace bromvale {

class Control;
class ControlVisitor;
class Form;

enum class ControlKind {
    Form,
    Label,
    Button,
    CheckBox,
    OptionButton,
    TextBox,
    ComboBox,
    Frame,
    Line,
    Picture,
    ListView,
    ImageList,
    ListBar,
    StatusBar,
    ProgressBar,
    Timer,
    Menu,
    Socket,
};

// What a write changed; a peer repaints by it.
enum class Property {
    Caption,
    Visible,
    Enabled,
    Place,
    MousePointer,
    BackColor,
    Value,      // check box, option button, progress bar, picture
    Text,       // text box, combo box
    Items,      // combo box entries, list rows (also their order), list bar, panels
    Selection,  // selected rows of a list
    Columns,
    Range,     // progress bar
    Interval,  // timer
    Content,   // what a frame holds needs another size
    State,     // window state of a form
    Focus,     // the part of a list bar that has its keyboard
};

enum class MousePointer { Default = 0, Arrow = 1, Hourglass = 11 };
enum class Alignment { Left, Right, Centre };
enum class BackColor { Default, Greyed };

// The provider's side of one control. Offline there is none.
class ControlPeer {
  public:
    virtual ~ControlPeer() = default;
    // A property was written and holds its new value. Painting it may wait; Visible, Enabled, Place and
    // State take effect before this returns.
    virtual void changed(Property property) = 0;
    virtual void takeFocus() {}
    // A control within this one got the keyboard and is to be seen.
    virtual void reveal(const Control& /*inside*/) {}
    [[nodiscard]] virtual WindowHandle window() const { return nullptr; }
};

// Place in twips, relative to the container; of a form the outer window on the screen.
// Of a line left/top are its first point, width/height the way to its second one.
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Place&) const = default;
};

// State that every control has. Assigning a property that changes it fires the control's own event as a
// user's action would, once; assigning the value that is there does nothing.
class Control {
  public:
    Control(Form* form, std::string_view name, ControlKind kind);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] ControlKind kind() const { return kind_; }
    [[nodiscard]] Form* form() const { return form_; }

    // The frame that holds the control; null where that is the form itself.
    [[nodiscard]] Control* container() const { return container_; }
    void setContainer(Control* container) { container_ = container; }

    [[nodiscard]] const std::string& caption() const { return caption_; }
    void setCaption(std::string_view caption);
    // What the control is called by those who don't see it, without marks of access keys: the name given
    // here, else the caption or what stands in for it. Empty for none.
    [[nodiscard]] virtual std::string spokenName() const;
    void setSpokenName(std::string_view name) { spokenName_ = name; }
    [[nodiscard]] bool visible() const { return visible_; }
    void setVisible(bool visible);
    [[nodiscard]] bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);
    [[nodiscard]] MousePointer mousePointer() const { return mousePointer_; }
    void setMousePointer(MousePointer pointer);
    [[nodiscard]] BackColor backColor() const { return backColor_; }
    void setBackColor(BackColor color);

    // Twips.
    [[nodiscard]] const Place& place() const { return place_; }
    [[nodiscard]] int left() const { return place_.left; }
    [[nodiscard]] int top() const { return place_.top; }
    [[nodiscard]] int width() const { return place_.width; }
    [[nodiscard]] int height() const { return place_.height; }
    void setLeft(int left);
    void setTop(int top);
    void setWidth(int width);
    void setHeight(int height);
    virtual void setPlace(const Place& place);

    // Position in the form's tab order, -1 for none.
    [[nodiscard]] int tabIndex() const { return tabIndex_; }
    void setTabIndex(int index) { tabIndex_ = index; }

    // Visible together with the frames that hold it. The window itself isn't asked.
    [[nodiscard]] bool shown() const;
    // Can be reached by the user: shown, and enabled together with all that holds it, in a loaded window.
    [[nodiscard]] bool reachable() const;

    // Ignored for a control that cannot be reached.
    void setFocus();

    // The user clicks, by mouse or keyboard. Nothing happens on a control that takes no clicks or cannot be
    // reached.
    virtual void userClick() {}
    // An arrow key moves the choice within a group of controls; false where there is none.
    virtual bool userArrow(bool /*backwards*/) { return false; }
    // The keyboard asks for the control's own menu, where it has one.
    [[nodiscard]] virtual bool hasContextMenu() const { return false; }
    virtual void userContextMenu() {}
    // The kind can have the keyboard at all.
    [[nodiscard]] virtual bool takesFocus() const { return false; }
    // The keyboard can come here now, and does by the Tab key.
    [[nodiscard]] bool takesFocusNow() const { return takesFocus() && tabIndex_ >= 0 && reachable(); }
    [[nodiscard]] virtual bool isTabStop() const { return takesFocusNow(); }
    // An "&" of its caption marks an access key.
    [[nodiscard]] virtual bool hasAccessKey() const { return true; }
    // Return belongs to the control, not to the form's default button.
    [[nodiscard]] virtual bool keepsReturn() const { return false; }
    // The form has this inner size now.
    virtual void formResized(int /*width*/, int /*height*/) {}

    virtual void accept(ControlVisitor& visitor) = 0;

    [[nodiscard]] ControlPeer* peer() const { return peer_.get(); }
    void setPeer(std::unique_ptr<ControlPeer> peer);

  protected:
    void notify(Property property);
    // For state that a peer has already shown to the user.
    void storePlace(const Place& place) { place_ = place; }

    // The control right before this one in its container; null for the first.
    [[nodiscard]] Control* before() const;

  private:
    Form* form_;
    Control* container_ = nullptr;
    std::string name_;
    std::string caption_;
    std::string spokenName_;
    std::unique_ptr<ControlPeer> peer_;
    Place place_;
    int tabIndex_ = -1;
    ControlKind kind_;
    MousePointer mousePointer_ = MousePointer::Default;
    BackColor backColor_ = BackColor::Default;
    bool visible_ = true;
    bool enabled_ = true;
};

// The caption as it is read: "&A && B" is "A & B".
[[nodiscard]] std::string withoutAccessKey(std::string_view caption);

// Provider: makes the visible side of a control. Form::load calls it for the form first and then for its
// controls in their order, frames before what they hold; later controls lie further back.
// Null where nothing is to be seen (always offline).
[[nodiscard]] std::unique_ptr<ControlPeer> createPeer(Control& control);

}  // namespace bromvale
