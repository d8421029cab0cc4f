#include "bromvale-offline/show.h"

#include "bromvale-offline/words.h"

namespace bromvale::offline {
namespace {

std::string placeText(const Place& place) {
    return std::to_string(place.left) + "," + std::to_string(place.top) + " " + std::to_string(place.width) +
           "x" + std::to_string(place.height);
}

std::string panelTexts(const StatusBar& bar) {
    std::string text;
    for (const StatusBar::Panel& panel : bar.panels()) {
        if (&panel != &bar.panels().front()) text += " | ";
        text += panel.text;
    }
    return text;
}

std::string listText(const ListView& list) {
    std::string text = std::to_string(list.count()) + (list.count() == 1 ? " row" : " rows") + ", columns";
    for (const ListView::Column& column : list.columns()) {
        text += " [" + column.heading + " " + std::to_string(column.width) + "]";
    }
    return text;
}

std::string barText(const ListBar& bar) {
    std::string text;
    for (std::size_t i = 0; i < bar.bars().size(); ++i) {
        const bool open = static_cast<int>(i) == bar.openBar();
        text += (i > 0 ? "; " : "") + bar.bars()[i].caption + (open ? " (open):" : ":");
        for (const ListBar::Item& item : bar.bars()[i].items) text += " [" + item.caption + "]";
    }
    return text;
}

// What a control shows where that is not its caption.
class ValueText : public ControlVisitor {
  public:
    std::string text;

    using ControlVisitor::visit;
    void visit(TextBox& box) override { text = box.text(); }
    void visit(ComboBox& box) override { text = box.text(); }
    void visit(CheckBox& box) override { text = std::to_string(box.value()); }
    void visit(OptionButton& button) override { text = button.value() ? "1" : "0"; }
    void visit(ProgressBar& bar) override { text = std::to_string(bar.value()); }
    void visit(StatusBar& bar) override { text = panelTexts(bar); }
    void visit(ListView& list) override { text = listText(list); }
    void visit(ListBar& bar) override { text = barText(bar); }
};

bool isVisual(ControlKind kind) {
    return kind != ControlKind::ImageList && kind != ControlKind::Timer && kind != ControlKind::Menu &&
           kind != ControlKind::Socket;
}

}  // namespace

Form* findForm(std::string_view name) {
    for (Form* form : loadedForms()) {
        if (form->name() == name) return form;
    }
    return nullptr;
}

Control* findControl(std::string_view name) {
    if (const std::size_t dot = name.find('.'); dot != std::string_view::npos) {
        const Form* form = findForm(name.substr(0, dot));
        return form != nullptr ? form->find(name.substr(dot + 1)) : nullptr;
    }
    if (Form* form = findForm(name)) return form;
    if (const Form* form = findForm("frmMain")) {
        if (Control* control = form->find(name)) return control;
    }
    for (const Form* form : loadedForms()) {
        if (Control* control = form->find(name)) return control;
    }
    return nullptr;
}

std::string valueText(Control& control) {
    ValueText value;
    value.text = control.caption();
    control.accept(value);
    return value.text;
}

void printRows(const ListView& list, Transcript& transcript) {
    const int columns = static_cast<int>(list.columns().size());
    for (int row = 1; row <= list.count(); ++row) {
        const ListItem& item = list.item(row);
        std::string text;
        for (int column = 0; column < columns; ++column)
            text += (column > 0 ? "\t" : "") + item.column(column);
        transcript.line(text);
    }
}

void printWindow(const Form& form, Transcript& transcript) {
    constexpr const char* kStates[] = {"normal", "minimised", "maximised"};
    transcript.line(form.name() + " form " + placeText(form.place()) + " inner " +
                    std::to_string(form.scaleWidth()) + "x" + std::to_string(form.scaleHeight()) + " " +
                    kStates[static_cast<int>(form.windowState())] + " \"" + form.caption() + "\"");
    for (Control* control : form.controls()) {
        if (!isVisual(control->kind()) || !control->shown()) continue;
        std::string text = "  " + control->name() + " " + std::string(kindName(control->kind())) + " " +
                           placeText(control->place()) + (control->reachable() ? " enabled" : " disabled");
        if (form.focused() == control) text += " focus";
        const std::string value = valueText(*control);
        if (!value.empty() && value != control->caption()) text += " " + value;
        if (!control->caption().empty()) text += " \"" + control->caption() + "\"";
        transcript.line(text);
    }
}

}  // namespace bromvale::offline
