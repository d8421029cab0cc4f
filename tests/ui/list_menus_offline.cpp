// The menus of the lists by the keyboard.
#include "platform/controls/virtual_keys.h"
#include "platform/offline/machine.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class ListMenus : public MainFormTest {
  protected:
    ListMenus() {
        frmMain().show();
        frmMain().backup.show();
        list().clear();
        for (const char* name : {"a.reg", "b.reg", "c.reg"}) list().add(name, 3);
        list().setFocus();
    }
    static ListView& list() { return frmMain().backup.lvwBackup; }
    static std::string lastMenu() {
        const auto menus = machine().events.of(EventKind::Menu);
        return menus.empty() ? "" : menus.back().text;
    }
};

TEST_F(ListMenus, TheMenuKeyOpensTheMenuWithItsCaptionsByTheSelectedRows) {
    list().userSelect({2});
    EXPECT_TRUE(frmMain().userKey(kMenuKey, false, false));
    EXPECT_EQ(lastMenu(),
              "markierten Eintrag bearbeiten | markierten Eintrag einfügen | markierten Eintrag löschen");
    list().userSelect({1, 2});
    EXPECT_TRUE(frmMain().userKey(kF10, true, false));
    EXPECT_EQ(lastMenu(),
              "markierte Einträge bearbeiten | markierte Einträge einfügen | markierte Einträge löschen");
    EXPECT_EQ(machine().events.count(EventKind::Menu), 2u);
}

TEST_F(ListMenus, WhetherAnEntryWasChosenIsRecorded) {
    list().userSelect({1});
    const auto chosen = [] { return machine().events.of(EventKind::Menu).back().answer; };
    EXPECT_TRUE(frmMain().userKey(kMenuKey, false, false));
    EXPECT_EQ(chosen(), 0);
    machine().menuChoices.emplace_back("markierten Eintrag löschen");
    EXPECT_TRUE(frmMain().userKey(kMenuKey, false, false));
    EXPECT_EQ(chosen(), 1);
}

TEST_F(ListMenus, EachListHasOne) {
    FrmMain& form = frmMain();
    for (const ListView* each : {&form.scan.lvwRegKeys, &form.backup.lvwBackup, &form.programs.lvwDeinstall,
                                 &form.cleanup.lvwOrdnerList})
        EXPECT_TRUE(each->hasContextMenu()) << each->name();
}

}  // namespace
}  // namespace bromvale::testing
