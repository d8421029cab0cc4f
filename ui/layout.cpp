#include "ui/layout.h"

#include <algorithm>
#include <cassert>
#include <string>
#include <utility>
#include <vector>

namespace bromvale {
namespace {

Control& named(const Form& form, const char* name) {
    Control* control = form.find(name);
    assert(control);
    return *control;
}

void buildLabel(Label& label, unsigned flags) {
    if (flags & kRightAligned) label.setAlignment(Alignment::Right);
    if (flags & kCentred) label.setAlignment(Alignment::Centre);
    if (flags & kTahoma) label.setFont("Tahoma");
    if (flags & kMsSansSerif) label.setFont("MS Sans Serif");
}

void buildButton(Button& button, unsigned flags) {
    button.setDefault(flags & kDefaultButton);
    button.setCancel(flags & kCancelButton);
}

void buildTextBox(TextBox& box, unsigned flags) {
    box.setMultiLine(flags & kMultiLine);
    box.setLocked(flags & kLocked);
    box.setText("");
}

void buildMenuItem(const Form& form, MenuItem& item, const char* menuName) {
    if (!menuName) return;
    auto& menu = static_cast<MenuItem&>(named(form, menuName));
    if (std::ranges::find(menu.children(), &item) == menu.children().end()) menu.add(item);
}

// What only one kind of control has.
void buildKind(const Form& form, Control& control, const ControlRow& row) {
    switch (row.kind) {
        case ControlKind::Label: return buildLabel(static_cast<Label&>(control), row.flags);
        case ControlKind::Button: return buildButton(static_cast<Button&>(control), row.flags);
        case ControlKind::TextBox: return buildTextBox(static_cast<TextBox&>(control), row.flags);
        case ControlKind::ComboBox:
            return static_cast<ComboBox&>(control).setSorted(row.flags & kSortedItems);
        case ControlKind::ListView:
            return static_cast<ListView&>(control).setMultiSelect(row.flags & kMultiSelect);
        case ControlKind::Menu: return buildMenuItem(form, static_cast<MenuItem&>(control), row.container);
        default: return;
    }
}

}  // namespace

void buildPage(Form& form, std::span<const ControlRow> rows) {
    for (const ControlRow& row : rows) {
        Control& control = named(form, row.name);
        assert(control.kind() == row.kind);
        if (row.container && row.kind != ControlKind::Menu) control.setContainer(&named(form, row.container));
        control.setCaption(row.caption);
        control.setPlace(row.place);
        control.setTabIndex(row.tab);
        control.setEnabled(!(row.flags & kDisabled));
        control.setVisible(!(row.flags & kHidden));
        control.setBackColor(row.flags & kGreyed ? BackColor::Greyed : BackColor::Default);
        control.setMousePointer(row.flags & kArrowPointer ? MousePointer::Arrow : MousePointer::Default);
        buildKind(form, control, row);
    }
}

void buildColumns(Form& form, std::span<const ColumnRow> rows) {
    for (auto row = rows.begin(); row != rows.end();) {
        Control& control = named(form, row->control);
        std::vector<ListView::Column> columns;
        std::vector<StatusBar::Panel> panels;
        const char* const name = row->control;
        for (; row != rows.end() && std::string_view(row->control) == name; ++row) {
            columns.push_back({row->text, row->width});
            panels.push_back({row->text, row->width});
        }
        if (control.kind() == ControlKind::ListView)
            static_cast<ListView&>(control).setColumns(std::move(columns));
        if (control.kind() == ControlKind::StatusBar)
            static_cast<StatusBar&>(control).setPanels(std::move(panels));
    }
}

void buildImages(Form& form, std::span<const ImageRow> rows) {
    for (const ImageRow& row : rows) static_cast<ImageList&>(named(form, row.list)).clear();
    for (const ImageRow& row : rows)
        static_cast<ImageList&>(named(form, row.list)).add(row.key, row.resource);
}

}  // namespace bromvale
