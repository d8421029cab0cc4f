#pragma once
#include <vector>

#include "platform/controls/control_of.h"

namespace bromvale {

// Lies along the lower edge of its form, whatever size that has; its height is its own. Panels count from 1;
// Failure 35600 out of range.
class StatusBar : public ControlOf<StatusBar, ControlKind::StatusBar> {
  public:
    struct Panel {
        std::string text;
        int width = 0;  // twips
    };
    using ControlOf::ControlOf;
    void setPanels(std::vector<Panel> panels);
    [[nodiscard]] const std::vector<Panel>& panels() const { return panels_; }
    [[nodiscard]] const std::string& panelText(int panel) const;
    void setPanelText(int panel, std::string_view text);
    void setPanelWidth(int panel, int width);
    void formResized(int formWidth, int formHeight) override {
        setPlace({0, formHeight - height(), formWidth, height()});
    }

  private:
    std::vector<Panel> panels_;
};

class ProgressBar : public ControlOf<ProgressBar, ControlKind::ProgressBar> {
  public:
    using ControlOf::ControlOf;
    [[nodiscard]] int minimum() const { return minimum_; }
    [[nodiscard]] int maximum() const { return maximum_; }
    [[nodiscard]] int value() const { return value_; }
    void setRange(int minimum, int maximum);
    void setValue(int value);

  private:
    int minimum_ = 0;
    int maximum_ = 100;
    int value_ = 0;
};

}  // namespace bromvale
