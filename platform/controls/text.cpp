#include "platform/controls/text.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text_case.h"
#include "platform/events.h"

namespace bromvale {
namespace {

constexpr int kInvalidArgument = 5;

}  // namespace

void EditedText::setText(std::string_view text) {
    if (text_ == text) return;
    text_.assign(text);
    notify(Property::Text);
    if (onChange) onChange();
}

void EditedText::userText(std::string_view text) {
    if (!reachable() || locked_ || text_ == text) return;
    text_.assign(text);
    dispatchUserEvent(onChange);
}

std::string EditedText::spokenName() const {
    const std::string own = Control::spokenName();
    const Label* const label = own.empty() ? as<Label>(before()) : nullptr;
    return label ? label->spokenName() : own;
}

void ComboBox::addItem(std::string_view item) {
    const auto behind = [](std::string_view added, const std::string& there) {
        return compareWithoutCase(added, there) < 0;
    };
    const auto at = sorted_ ? std::upper_bound(items_.begin(), items_.end(), item, behind) : items_.end();
    items_.insert(at, std::string(item));
    notify(Property::Items);
}

void ComboBox::addItem(std::string_view item, int index) {
    if (index < 0 || index > count()) raise(kInvalidArgument);
    items_.insert(items_.begin() + index, std::string(item));
    notify(Property::Items);
}

void ComboBox::clearItems() {
    if (items_.empty()) return;
    items_.clear();
    notify(Property::Items);
}

std::string ComboBox::item(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)] : std::string();
}

void ComboBox::userChoose(int index) {
    if (!reachable() || index < 0 || index >= count()) return;
    text_ = items_[static_cast<std::size_t>(index)];
    notify(Property::Text);
    dispatchUserEvent(onClick);
}

}  // namespace bromvale
