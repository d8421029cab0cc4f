#include "platform/controls/form.h"

#include <algorithm>

#include "platform/events.h"

namespace bromvale {
namespace {

std::vector<Form*> formList;

}  // namespace

// Takes the window away however Form_Unload ends.
struct Form::Unloading {
    explicit Unloading(Form& form) : form_(form) { form_.unloading_ = true; }
    Unloading(const Unloading&) = delete;
    Unloading& operator=(const Unloading&) = delete;
    ~Unloading() {
        form_.loaded_ = false;
        std::erase(formList, &form_);
        form_.destroyPeers();
        form_.setVisible(false);
        form_.unloading_ = false;
    }
    Form& form_;
};

const std::vector<Form*>& loadedForms() {
    return formList;
}

Form* loadedForm(std::string_view name) {
    const auto found = std::ranges::find(formList, name, &Form::name);
    return found == formList.end() ? nullptr : *found;
}

void unloadAllForms() {
    // A copy: a form that is unloaded leaves the list.
    for (Form* form : std::vector(loadedForms())) form->unload();
}

Form::Form(std::string_view name) : ControlOf(nullptr, name) {
    setVisible(false);
}

Form::~Form() {
    std::erase(formList, this);
    destroyPeers();
}

void Form::load() {
    if (loaded_) return;
    loaded_ = true;
    building_ = true;
    formList.push_back(this);
    windowState_ = WindowState::Normal;
    design();
    createPeers();
    building_ = false;
    sizeChanged();
    Form_Load();
}

void Form::show() {
    load();
    if (visible()) {
        notify(Property::Visible);  // comes to the front
    } else {
        setVisible(true);
    }
    if (!focused_) moveFocus(false);
}

void Form::unload() {
    // Form_Unload of the main window unloads all forms, itself among them.
    if (!loaded_ || unloading_) return;
    const Unloading unloading(*this);
    Form_Unload();
}

void Form::createPeers() {
    setPeer(createPeer(*this));
    for (Control* control : controls_) createPeerOf(*control);
}

void Form::createPeerOf(Control& control) {
    if (control.peer()) return;
    if (control.container()) createPeerOf(*control.container());
    control.setPeer(createPeer(control));
}

void Form::destroyPeers() {
    focused_ = nullptr;
    for (auto control = controls_.rbegin(); control != controls_.rend(); ++control)
        (*control)->setPeer(nullptr);
    setPeer(nullptr);
}

void Form::setScaleSize(int width, int height) {
    const FrameSize frame = frameSize(borderStyle_);
    setPlace({left(), top(), width + frame.width, height + frame.height});
}

void Form::setPlace(const Place& place) {
    if (this->place() == place) return;
    if (peer()) {
        storePlace(place);
        notify(Property::Place);
        return;
    }
    const FrameSize frame = frameSize(borderStyle_);
    placed(place, std::max(0, place.width - frame.width), std::max(0, place.height - frame.height),
           windowState_);
}

void Form::setWindowState(WindowState state) {
    if (windowState_ == state) return;
    if (peer()) {
        windowState_ = state;
        notify(Property::State);
        return;
    }
    const FrameSize frame = frameSize(borderStyle_);
    const WindowState before = windowState_;
    if (before == WindowState::Normal) restored_ = place();
    Place outer = place();
    if (state == WindowState::Maximised) outer = {0, 0, screenWidth(), screenHeight()};
    if (state == WindowState::Normal) outer = restored_;
    placed(outer, outer.width - frame.width, outer.height - frame.height, state);
}

void Form::placed(const Place& outer, int scaleWidth, int scaleHeight, WindowState state) {
    windowState_ = state;
    if (state == WindowState::Minimised) return;
    storePlace(outer);
    const bool resized = scaleWidth != scaleWidth_ || scaleHeight != scaleHeight_;
    scaleWidth_ = scaleWidth;
    scaleHeight_ = scaleHeight;
    if (!resized || !loaded_ || building_ || unloading_) return;
    sizeChanged();
}

void Form::sizeChanged() {
    for (Control* control : controls_) control->formResized(scaleWidth_, scaleHeight_);
    Form_Resize();
}

void Form::centreOnScreen() {
    setPlace({(screenWidth() - width()) / 2, (screenHeight() - height()) / 2, width(), height()});
}

void Form::keepOnScreen() {
    setPlace(withCaptionIn(workingArea(left(), top()), place()));
}

Place withCaptionIn(const ScreenArea& area, const Place& place) {
    constexpr int kGrip = 600;  // of the caption, both ways: what a mouse needs to take hold of it
    Place moved = place;
    if (moved.left > area.right - kGrip) moved.left = area.right - moved.width;
    if (moved.top > area.bottom - kGrip) moved.top = area.bottom - moved.height;
    moved.left = std::max(moved.left, area.left);
    moved.top = std::max(moved.top, area.top);
    return moved;
}

Control* Form::find(std::string_view name) const {
    const auto named = [name](const Control* control) { return control->name() == name; };
    const auto found = std::find_if(controls_.begin(), controls_.end(), named);
    return found == controls_.end() ? nullptr : *found;
}

void Form::Form_MouseMove(float, float) {}

void Form::userClose() {
    dispatchUserEvent([this] { unload(); });
}

void Form::userFocus(Control* control) {
    if (!loaded_) return;  // windows that are being destroyed still hand the focus about
    focused_ = control;
    if (control == nullptr) return;
    for (const Control* around = control->container(); around != nullptr; around = around->container()) {
        if (around->peer() != nullptr) around->peer()->reveal(*control);
    }
}

void Form::userMouseMove(float x, float y) {
    dispatchUserEvent([this, x, y] { Form_MouseMove(x, y); });
}

void Form::userTaskbarCreated() {
    dispatchUserEvent([this] { Form_TaskbarCreated(); });
}

}  // namespace bromvale
