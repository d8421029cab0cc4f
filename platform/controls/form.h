#pragma once
#include <vector>

#include "platform/controls/control_of.h"
#include "platform/screen.h"

namespace bromvale {

class Button;

enum class WindowState { Normal = 0, Minimised = 1, Maximised = 2 };
enum class BorderStyle {
    Sizable,
    FixedDialog,      // caption and close button, one size
    FixedNoControls,  // neither caption text nor any button
};

// A window. Its controls are members that register themselves here in their order of declaration; `design`
// gives them their places and texts. The life of a window: load (design, peers, Form_Load), show, unload
// (Form_Unload, peers gone). After an unload the next load starts from the design again.
class Form : public ControlOf<Form, ControlKind::Form> {
  public:
    explicit Form(std::string_view name);
    ~Form() override;

    void load();
    void show();
    void unload();
    [[nodiscard]] bool loaded() const { return loaded_; }

    // Inner size in twips.
    [[nodiscard]] int scaleWidth() const { return scaleWidth_; }
    [[nodiscard]] int scaleHeight() const { return scaleHeight_; }
    // Gives the window the outer size that this inner size needs.
    void setScaleSize(int width, int height);
    [[nodiscard]] WindowState windowState() const { return windowState_; }
    void setWindowState(WindowState state);
    [[nodiscard]] BorderStyle borderStyle() const { return borderStyle_; }
    [[nodiscard]] int iconResource() const { return iconResource_; }
    void setPlace(const Place& place) override;
    void centreOnScreen();
    // Moves a window whose caption can't be reached back onto the screen that it is nearest to.
    void keepOnScreen();

    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
    // By name, exact; null where there is none.
    [[nodiscard]] Control* find(std::string_view name) const;
    [[nodiscard]] Control* focused() const { return focused_; }
    [[nodiscard]] Button* defaultButton() const;
    [[nodiscard]] Button* cancelButton() const;
    [[nodiscard]] WindowHandle window() const { return peer() ? peer()->window() : nullptr; }

    // The window got this outer place and inner size, by the user or by an assignment. Runs Form_Resize when
    // the size is another one. A minimised window keeps place and size. While the peers are made nothing
    // runs: load calls Form_Resize once when all of them are there. Providers call this after every Place or
    // State that they carried out, since the system may round or refuse.
    void placed(const Place& outer, int scaleWidth, int scaleHeight, WindowState state);
    // The user closes the window by its close box.
    void userClose();
    void userFocus(Control* control);
    // Position in twips; see Form_MouseMove.
    void userMouseMove(float x, float y);
    // A task bar has come up, at the system's start or after its end; see Form_TaskbarCreated.
    void userTaskbarCreated();
    // Tab, Shift+Tab, Return, Escape, arrows in a group of option buttons, the keys of context menus (the
    // menu key, Shift+F10) and access keys as in any dialog. `key` is a virtual key code; with `alt` it is
    // the character on the key, upper case, so that umlauts work on any keyboard. `held` for the repetitions
    // of a key that is held down: they click nothing, so that nothing is done twice and no question that
    // follows is answered unseen. True when the key was used up.
    bool userKey(int key, bool shift, bool alt, bool held = false);

  protected:
    virtual void design() = 0;
    virtual void Form_Load() {}
    virtual void Form_Unload() {}
    virtual void Form_Resize() {}
    virtual void Form_MouseMove(float x, float y);
    virtual void Form_TaskbarCreated() {}

    void setBorderStyle(BorderStyle style) { borderStyle_ = style; }
    void setIconResource(int id) { iconResource_ = id; }

  private:
    friend class Control;
    struct Unloading;
    void createPeers();
    void createPeerOf(Control& control);
    void destroyPeers();
    void leaveUnreachable();
    void sizeChanged();
    [[nodiscard]] std::vector<Control*> tabStops() const;
    bool moveFocus(bool backwards);
    bool useAccessKey(int key, bool held);
    bool openContextMenu(bool held);

    std::vector<Control*> controls_;
    Control* focused_ = nullptr;
    int scaleWidth_ = 0;
    int scaleHeight_ = 0;
    int iconResource_ = 0;
    WindowState windowState_ = WindowState::Normal;
    BorderStyle borderStyle_ = BorderStyle::Sizable;
    Place restored_;  // outer place of the window while it is maximised
    bool loaded_ = false;
    bool building_ = false;
    bool unloading_ = false;
};

// The place as it is while its caption begins within the area, the nearest such place otherwise. Windows that
// are larger than the area begin at its corner.
[[nodiscard]] Place withCaptionIn(const ScreenArea& area, const Place& place);

// The control behind this place of the tab order, or before it; round the end. Null for none at all.
[[nodiscard]] Control* neighbourInTabOrder(std::vector<Control*> controls, int tabIndex, bool backwards);

// All loaded forms in the order of their loading.
[[nodiscard]] const std::vector<Form*>& loadedForms();
// Null where no form of this name is loaded.
[[nodiscard]] Form* loadedForm(std::string_view name);
void unloadAllForms();

// Provider: what the task bar leaves of the screen that the window is on, in the window's own twips.
struct RoomForWindow {
    int width;
    int height;
};
[[nodiscard]] RoomForWindow roomFor(const Form& form);

// Provider: twips that border and caption add to the inner size.
struct FrameSize {
    int width;
    int height;
};
[[nodiscard]] FrameSize frameSize(BorderStyle style);

}  // namespace bromvale
