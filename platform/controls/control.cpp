#include "platform/controls/control.h"

#include <algorithm>
#include <utility>

#include "platform/controls/form.h"

namespace bromvale {

Control::Control(Form* form, std::string_view name, ControlKind kind)
    : form_(form), name_(name), kind_(kind) {
    if (form_) form_->controls_.push_back(this);
}

Control::~Control() {
    if (!form_) return;
    std::erase(form_->controls_, this);
    if (form_->focused_ == this) form_->focused_ = nullptr;
}

void Control::notify(Property property) {
    if (peer_) peer_->changed(property);
}

void Control::setPeer(std::unique_ptr<ControlPeer> peer) {
    peer_ = std::move(peer);
}

void Control::setCaption(std::string_view caption) {
    if (caption_ == caption) return;
    caption_.assign(caption);
    notify(Property::Caption);
}

std::string Control::spokenName() const {
    return spokenName_.empty() ? withoutAccessKey(caption_) : spokenName_;
}

std::string withoutAccessKey(std::string_view caption) {
    std::string text;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && ++i == caption.size()) break;
        text += caption[i];
    }
    return text;
}

Control* Control::before() const {
    if (!form_) return nullptr;
    Control* last = nullptr;
    for (Control* control : form_->controls()) {
        if (control == this) break;
        if (control->container() == container_) last = control;
    }
    return last;
}

void Control::setVisible(bool visible) {
    if (visible_ == visible) return;
    visible_ = visible;
    notify(Property::Visible);
    if (!visible && form_) form_->leaveUnreachable();
}

void Control::setEnabled(bool enabled) {
    if (enabled_ == enabled) return;
    enabled_ = enabled;
    notify(Property::Enabled);
    if (!enabled && form_) form_->leaveUnreachable();
}

void Control::setMousePointer(MousePointer pointer) {
    if (mousePointer_ == pointer) return;
    mousePointer_ = pointer;
    notify(Property::MousePointer);
}

void Control::setBackColor(BackColor color) {
    if (backColor_ == color) return;
    backColor_ = color;
    notify(Property::BackColor);
}

void Control::setLeft(int left) {
    setPlace({left, place_.top, place_.width, place_.height});
}
void Control::setTop(int top) {
    setPlace({place_.left, top, place_.width, place_.height});
}
void Control::setWidth(int width) {
    setPlace({place_.left, place_.top, width, place_.height});
}
void Control::setHeight(int height) {
    setPlace({place_.left, place_.top, place_.width, height});
}

void Control::setPlace(const Place& place) {
    if (place_ == place) return;
    place_ = place;
    notify(Property::Place);
}

bool Control::shown() const {
    for (const Control* control = this; control; control = control->container_) {
        if (!control->visible_ && control->kind_ != ControlKind::Form) return false;
    }
    return true;
}

bool Control::reachable() const {
    for (const Control* control = this; control; control = control->container_) {
        if (!control->enabled_) return false;
    }
    if (form_ && !(form_->loaded() && form_->enabled())) return false;
    return shown();
}

void Control::setFocus() {
    if (!form_ || !reachable()) return;
    form_->focused_ = this;
    if (peer_) peer_->takeFocus();
}

}  // namespace bromvale
