// The list's context menu, as the machine records it.
#include "platform/offline/machine.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using ResultListMenuTest = ScanTest;

TEST_F(ResultListMenuTest, OnlyTheRightButtonOpensTheMenuAndItsChoiceRuns) {
    form().show();
    for (const char* key : {"[HKEY_LOCAL_MACHINE\\K1]", "[HKEY_LOCAL_MACHINE\\K2]"})
        form().scan.lvwRegKeys.add({key, "@", "", "-2147483646"}, 1);
    form().scan.cmdStart.setCaption("&Entfernen");
    form().scan.chbRegKeysShow.setValue(1);
    form().scan.lvwRegKeys.userSelect({2});
    form().scan.lvwRegKeys.userMouseUp(1);
    EXPECT_EQ(offline::machine().events.count(offline::EventKind::Menu), 0u);
    offline::machine().menuChoices.emplace_back("mnuPopUpRegKeyEinzeln");
    form().scan.lvwRegKeys.userMouseUp(2);
    const auto menus = offline::machine().events.of(offline::EventKind::Menu);
    ASSERT_EQ(menus.size(), 1u);
    EXPECT_EQ(menus[0].text, "&markierten Eintrag entfernen | &alle Einträge entfernen");
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\K1] | @ |  | -2147483646"}));
}

}  // namespace
}  // namespace bromvale::testing
