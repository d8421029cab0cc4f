#include "platform/controls/status.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"

namespace bromvale {
namespace {

// Panels count from 1.
template <class Panels>
auto& panelAt(Panels& panels, int panel) {
    if (panel < 1 || panel > static_cast<int>(panels.size())) raise(Failure::kIndexOutOfBounds);
    return panels[static_cast<std::size_t>(panel - 1)];
}

}  // namespace

void StatusBar::setPanels(std::vector<Panel> panels) {
    panels_ = std::move(panels);
    notify(Property::Items);
}

const std::string& StatusBar::panelText(int panel) const {
    return panelAt(panels_, panel).text;
}

void StatusBar::setPanelText(int panel, std::string_view text) {
    std::string& shown = panelAt(panels_, panel).text;
    if (shown == text) return;
    shown.assign(text);
    notify(Property::Items);
}

void StatusBar::setPanelWidth(int panel, int width) {
    int& shown = panelAt(panels_, panel).width;
    if (shown == width) return;
    shown = width;
    notify(Property::Items);
}

void ProgressBar::setRange(int minimum, int maximum) {
    if (minimum_ == minimum && maximum_ == maximum) return;
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    value_ = std::clamp(value_, minimum_, maximum_);
    notify(Property::Range);
}

void ProgressBar::setValue(int value) {
    const int wanted = std::clamp(value, minimum_, maximum_);
    if (value_ == wanted) return;
    value_ = wanted;
    notify(Property::Value);
}

}  // namespace bromvale
