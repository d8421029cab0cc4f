#include "ui/rows.h"

#include <algorithm>
#include <vector>

namespace bromvale {

void setColumns(ListView& list, std::span<const ColumnRow> rows) {
    std::vector<ListView::Column> columns;
    for (const ColumnRow& row : rows) columns.push_back({row.text, row.width});
    list.setColumns(std::move(columns));
}

void setPanels(StatusBar& bar, std::span<const ColumnRow> rows) {
    std::vector<StatusBar::Panel> panels;
    for (const ColumnRow& row : rows) panels.push_back({row.text, row.width});
    bar.setPanels(std::move(panels));
}

void setImages(ImageList& list, std::span<const ImageRow> rows) {
    list.clear();
    for (const ImageRow& row : rows) list.add(row.key, row.resource);
}

void designKind(Control& control, Control* container, unsigned /*flags*/) {
    if (container) control.setContainer(container);
}

void designKind(Label& label, Control* container, unsigned flags) {
    designKind(static_cast<Control&>(label), container, flags);
    if (flags & kRightAligned) label.setAlignment(Alignment::Right);
    if (flags & kCentred) label.setAlignment(Alignment::Centre);
    label.setAnnounced(flags & kAnnounced);
    if (flags & kTahoma) label.setFont("Tahoma");
    if (flags & kMsSansSerif) label.setFont("MS Sans Serif");
}

void designKind(Button& button, Control* container, unsigned flags) {
    designKind(static_cast<Control&>(button), container, flags);
    button.setDefault(flags & kDefaultButton);
    button.setCancel(flags & kCancelButton);
}

void designKind(TextBox& box, Control* container, unsigned flags) {
    designKind(static_cast<Control&>(box), container, flags);
    box.setMultiLine(flags & kMultiLine);
    box.setLocked(flags & kLocked);
    box.setText("");
}

void designKind(ComboBox& box, Control* container, unsigned flags) {
    designKind(static_cast<Control&>(box), container, flags);
    box.setSorted(flags & kSortedItems);
}

void designKind(ListView& list, Control* container, unsigned flags) {
    designKind(static_cast<Control&>(list), container, flags);
    list.setMultiSelect(flags & kMultiSelect);
}

// A menu holds its entries without being their container.
void designKind(MenuItem& item, Control* container, unsigned /*flags*/) {
    if (!container) return;
    auto& menu = static_cast<MenuItem&>(*container);
    if (std::ranges::find(menu.children(), &item) == menu.children().end()) menu.add(item);
}

void designControl(const RowControls& controls, const RowFacts& facts) {
    Control& control = *controls.control;
    control.setCaption(facts.caption);
    control.setPlace(facts.place);
    control.setTabIndex(facts.tab);
    control.setEnabled(!(facts.flags & kDisabled));
    control.setVisible(!(facts.flags & kHidden));
    control.setBackColor(facts.flags & kGreyed ? BackColor::Greyed : BackColor::Default);
    control.setMousePointer(facts.flags & kArrowPointer ? MousePointer::Arrow : MousePointer::Default);
    facts.designKind(control, controls.container, facts.flags);
}

void resizeControl(Control& control, const Follows& follows, const InnerSize& inner) {
    const int down = inner.height;
    const int across = inner.width;
    if (follows.height) control.setHeight(down - follows.height);
    if (follows.top) control.setTop(down - follows.top);
    if (follows.width) control.setWidth(across - follows.width);
    if (follows.left) control.setLeft(across - follows.left);
    if (follows.rightEnd) static_cast<Line&>(control).setX2(across - follows.rightEnd);
    if (follows.firstPanel) static_cast<StatusBar&>(control).setPanelWidth(1, across - follows.firstPanel);
}

}  // namespace bromvale
