#pragma once
#include <span>
#include <string_view>

#include "ui/page.h"

namespace bromvale {

class ListPage;

// What a key does in the list: a click on a column's header, or a routine of the page.
struct ListKey {
    int keyCode;
    int column;  // from 1; 0 for a routine
    void (*act)(ListPage& page);
};
consteval ListKey sortKey(int keyCode, int column) {
    return {keyCode, column, nullptr};
}
template <auto Handler>
consteval ListKey actKey(int keyCode) {
    return {keyCode, 0, [](ListPage& page) { (static_cast<MemberClass<Handler>&>(page).*Handler)(); }};
}

// The caption of a menu entry by the number of selected rows.
struct CountedCaption {
    MenuItem& (*entry)(ListPage& page);
    std::string_view one;  // for none as well
    std::string_view several;
};
template <auto Entry>
consteval CountedCaption counted(std::string_view one, std::string_view several) {
    return {[](ListPage& page) -> MenuItem& { return static_cast<MemberClass<Entry>&>(page).*Entry; }, one,
            several};
}

struct ListRules {
    std::string_view spokenName;
    std::span<const ColumnRow> columns;
    std::span<const ListKey> keys;
    std::span<const CountedCaption> captions;
};

// A page around one list: what a click on a header, a key and the mouse do there.
class ListPage : public Page {
  public:
    // Each click turns the order round, one on another column too. Columns from 1.
    void sortBy(int column);
    void keyDown(int keyCode);
    // Brings the captions of the menu up to date and opens it at the right button.
    void mouseUp(int button);
    // The same by the keyboard: at the selected row.
    void contextMenu();

  protected:
    // List and menu are the page's own, which are made behind this.
    ListPage(MainWindow& ofWindow, Frame& frame, ListView& list, MenuItem& popUp, const ListRules& rules)
        : Page(ofWindow, frame), list_(list), popUp_(popUp), rules_(rules) {}
    ~ListPage() = default;
    void designRest() override;

  private:
    void countSelected();

    ListView& list_;
    MenuItem& popUp_;
    const ListRules& rules_;
};

// The events of a list page's list, for its row.
struct ListEvents {
    static void connect(ListView& list, ListPage& page);
};
inline constexpr ListEvents kListEvents;

}  // namespace bromvale
