// Rows of a page, one a case: test_wrong_rows compiles each. The row of the case "right" compiles; the others
// must not, with the words behind the case in the compiler's complaint.
#include "ui/backup_page.h"
#include "ui/cleanup_page.h"

namespace bromvale {
namespace {

class SamplePage : public PageOf<SamplePage> {
  public:
    Frame frame{&window, "frame"};
    Button button{&window, "button"};
    Label label{&window, "label"};
    MenuItem menu{&window, "menu"};
    void button_Click();
    void list_ColumnClick(int column);
};

using P = SamplePage;

[[maybe_unused]] constexpr Row<P> kRow =
#if defined CASE_right
    row<P, &P::button, &P::frame>("", {}, 0, kDefaultButton, {.top = 1},
                                  on<&Button::onClick, &P::button_Click>());
#elif defined CASE_name                       // is not a member of
    row<P, &P::buton, &P::frame>("", {}, 0, 0);
#elif defined CASE_handler_name               // is not a member of
    row<P, &P::button, &P::frame>("", {}, 0, 0, on<&Button::onClick, &P::button_Clik>());
#elif defined CASE_control_of_another_page    // static assertion failed
    row<P, &CleanupPage::cmdInhaltLöschen, &P::frame>("", {}, 0, 0);
#elif defined CASE_container_of_another_page  // incompatible with object type
    row<P, &P::button, &CleanupPage::Frame7>("", {}, 0, 0);
#elif defined CASE_container_no_frame         // the container holds nothing
    row<P, &P::button, &P::label>("", {}, 0, 0);
#elif defined CASE_menu_in_a_frame            // the container holds nothing
    row<P, &P::menu, &P::frame>("", {}, 0, 0);
#elif defined CASE_button_in_a_menu           // the container holds nothing
    row<P, &P::button, &P::menu>("", {}, 0, 0);
#elif defined CASE_event_of_another_kind      // the control has no such event
    row<P, &P::button, &P::frame>("", {}, 0, 0, on<&ListView::onDblClick, &P::button_Click>());
#elif defined CASE_handler_of_another_kind    // no matching function
    row<P, &P::button, &P::frame>("", {}, 0, 0, on<&Button::onClick, &P::list_ColumnClick>());
#elif defined CASE_handler_of_another_page    // incompatible with object type
    row<P, &P::button, &P::frame>("", {}, 0, 0, on<&Button::onClick, &CleanupPage::cmdInhaltLöschen_Click>());
#elif defined CASE_flag_of_another_kind       // ui/rows.h:.*is not a constant expression
    row<P, &P::label, &P::frame>("", {}, 0, kDefaultButton);
#elif defined CASE_right_end_of_a_button      // ui/rows.h:.*is not a constant expression
    row<P, &P::button, &P::frame>("", {}, 0, 0, {.rightEnd = 1});
#elif defined CASE_panels_of_a_button         // ui/rows.h:.*is not a constant expression
    row<P, &P::button, &P::frame>("", {}, 0, 0, {.firstPanel = 1});
#endif

// What a row does with its page is made when it is used.
[[maybe_unused]] void use(P& page) {
    static_cast<void>(kRow.controls(page));
    if (kRow.connect != nullptr) kRow.connect(page);
}

}  // namespace
}  // namespace bromvale
