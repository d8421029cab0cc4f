#pragma once
#include <functional>
#include <span>
#include <tuple>
#include <type_traits>

#include "platform/controls.h"

namespace bromvale {

// A form as data: one row a control.

// What a row can say beside place and caption.
enum LayoutFlag : unsigned {
    kDisabled = 1u << 0,
    kHidden = 1u << 1,
    kDefaultButton = 1u << 2,
    kCancelButton = 1u << 3,
    kMultiLine = 1u << 4,
    kLocked = 1u << 5,
    kRightAligned = 1u << 6,
    kCentred = 1u << 7,
    kGreyed = 1u << 8,
    kSortedItems = 1u << 9,
    kMultiSelect = 1u << 10,
    kArrowPointer = 1u << 11,
    kTahoma = 1u << 12,
    kMsSansSerif = 1u << 13,
    kAnnounced = 1u << 14,
};

// What follows the window's inner size: each of these becomes the inner height (height, top) or width (the
// others) less so many twips. 0 stays as designed.
struct Follows {
    int height = 0;
    int top = 0;
    int width = 0;
    int left = 0;
    int rightEnd = 0;    // of a line
    int firstPanel = 0;  // width of a status bar's first panel
};

// Of a window, in twips.
struct InnerSize {
    int width;
    int height;
};

// A column of a list or a panel of a status bar, in order.
struct ColumnRow {
    const char* text;
    int width;  // twips; 0 hides a list's column, which then carries data for the code
};

// A picture of an image list, in order.
struct ImageRow {
    const char* key;
    int resource;
};

void setColumns(ListView& list, std::span<const ColumnRow> rows);
void setPanels(StatusBar& bar, std::span<const ColumnRow> rows);
void setImages(ImageList& list, std::span<const ImageRow> rows);

// What the rows of all forms have in common. Places are in twips, relative to the container (the form where
// there is none); a line's width and height lead to its second point.
struct RowFacts {
    const char* caption;
    Place place;
    int tab;  // -1: none
    unsigned flags;
    Follows follows;
    void (*designKind)(Control& control, Control* container, unsigned flags);
};

// The control of a row and what holds it, or null.
struct RowControls {
    Control* control;
    Control* container;
};

// The controls of Owner (a form or a page of one) are its members, and a row names them by pointers to
// members: what the owner hasn't, a container that holds nothing and a handler that doesn't fit its event
// don't compile.
template <class Owner>
struct Row : RowFacts {
    RowControls (*controls)(Owner& owner);
    void (*connect)(Owner& owner);
};

template <class MemberPointer>
struct MemberPointee;
template <class Class, class Type>
struct MemberPointee<Type Class::*> {
    using Of = Class;
    using Is = Type;
};
template <auto Member>
using MemberClass = typename MemberPointee<decltype(Member)>::Of;
template <auto Member>
using MemberType = typename MemberPointee<decltype(Member)>::Is;

// What an event holds of its handler: the same kind of function object for all that take the same arguments.
template <class... Arguments>
struct HandlerCall {
    void* owner;
    void (*call)(void* owner, Arguments... arguments);
    void operator()(Arguments... arguments) const { call(owner, arguments...); }
};

// An event and the routine that handles it, on<&Button::onClick, &ScanPage::cmdStart_Click>(). Where the
// handler belongs to a page of the owner, the page stands between the two.
template <auto Event, auto... Way>
struct On {
    template <class Target, class Owner>
    static void connect(Target& control, Owner& owner) {
        static_assert(std::is_base_of_v<MemberClass<Event>, Target>, "the control has no such event");
        connectTo(control.*Event, owner, Way...);
    }

  private:
    template <class Owner, class Page, class Class, class... Rest>
    static void connectTo(MemberType<Event>& event, Owner& owner, Page Class::*page,
                          Rest... rest) requires std::is_object_v<Page> {
        connectTo(event, owner.*page, rest...);
    }
    template <class Owner, class Class, class... Arguments>
    static void connectTo(std::function<void(Arguments...)>& event, Owner& owner,
                          void (Class::*)(Arguments...)) {
        constexpr auto kHandler = std::get<sizeof...(Way) - 1>(std::tuple(Way...));
        event = HandlerCall<Arguments...>{&owner, [](void* target, Arguments... arguments) {
                                              (static_cast<Owner*>(target)->*kHandler)(arguments...);
                                          }};
    }
};
template <auto Event, auto... Way>
consteval On<Event, Way...> on() {
    return {};
}

// What only one kind of control has.
void designKind(Control& control, Control* container, unsigned flags);
void designKind(Label& label, Control* container, unsigned flags);
void designKind(Button& button, Control* container, unsigned flags);
void designKind(TextBox& box, Control* container, unsigned flags);
void designKind(ComboBox& box, Control* container, unsigned flags);
void designKind(ListView& list, Control* container, unsigned flags);
void designKind(MenuItem& item, Control* container, unsigned flags);

template <class Kind>
void designAs(Control& control, Control* container, unsigned flags) {
    designKind(static_cast<Kind&>(control), container, flags);
}

template <class Kind>
consteval unsigned flagsOf() {
    unsigned flags = kDisabled | kHidden | kGreyed | kArrowPointer;
    if (std::is_same_v<Kind, Label>) flags |= kRightAligned | kCentred | kTahoma | kMsSansSerif | kAnnounced;
    if (std::is_same_v<Kind, Button>) flags |= kDefaultButton | kCancelButton;
    if (std::is_same_v<Kind, TextBox>) flags |= kMultiLine | kLocked;
    if (std::is_same_v<Kind, ComboBox>) flags |= kSortedItems;
    if (std::is_same_v<Kind, ListView>) flags |= kMultiSelect;
    return flags;
}

// The container of a menu entry is its menu, that of all others a frame.
template <class Owner, auto Member, auto Container = nullptr, class... Handlers>
consteval Row<Owner> row(const char* caption, Place place, int tab, unsigned flags, Follows follows,
                         Handlers... /*handlers*/) {
    using Kind = MemberType<Member>;
    static_assert(std::is_base_of_v<Control, Kind> && std::is_base_of_v<MemberClass<Member>, Owner>);
    if ((flags & ~flagsOf<Kind>()) != 0) throw "a flag of another kind of control";
    if (follows.rightEnd != 0 && !std::is_same_v<Kind, Line>) throw "only a line has a right end";
    if (follows.firstPanel != 0 && !std::is_same_v<Kind, StatusBar>) throw "only a status bar has panels";
    Row<Owner> row{};
    static_cast<RowFacts&>(row) = {caption, place, tab, flags, follows, &designAs<Kind>};
    if constexpr (std::is_null_pointer_v<decltype(Container)>) {
        row.controls = [](Owner& owner) { return RowControls{&(owner.*Member), nullptr}; };
    } else {
        using Holder = std::conditional_t<std::is_same_v<Kind, MenuItem>, MenuItem, Frame>;
        static_assert(std::is_same_v<MemberType<Container>, Holder>, "the container holds nothing");
        row.controls = [](Owner& owner) { return RowControls{&(owner.*Member), &(owner.*Container)}; };
    }
    if constexpr (sizeof...(Handlers) > 0)
        row.connect = [](Owner& owner) { (Handlers::connect(owner.*Member, owner), ...); };
    return row;
}
template <class Owner, auto Member, auto Container = nullptr, class... Handlers>
consteval Row<Owner> row(const char* caption, Place place, int tab, unsigned flags, Handlers... handlers) {
    return row<Owner, Member, Container>(caption, place, tab, flags, Follows{}, handlers...);
}

void designControl(const RowControls& controls, const RowFacts& facts);
void resizeControl(Control& control, const Follows& follows, const InnerSize& inner);

// Puts every control into its design state.
template <class Owner>
void designRows(Owner& owner, std::type_identity_t<std::span<const Row<Owner>>> rows) {
    for (const Row<Owner>& row : rows) designControl(row.controls(owner), row);
}
// Connects every event to its handler.
template <class Owner>
void connectRows(Owner& owner, std::type_identity_t<std::span<const Row<Owner>>> rows) {
    for (const Row<Owner>& row : rows) {
        if (row.connect) row.connect(owner);
    }
}
template <class Owner>
void resizeRows(Owner& owner, std::type_identity_t<std::span<const Row<Owner>>> rows,
                const InnerSize& inner) {
    for (const Row<Owner>& row : rows) resizeControl(*row.controls(owner).control, row.follows, inner);
}

}  // namespace bromvale
