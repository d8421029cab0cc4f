// The order in which opening the options page stores its values, and writes that fail.
#include "platform/offline/machine.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class OptionsOrder : public MainFormTest {
  protected:
    static std::vector<std::string> stored() {
        std::vector<std::string> lines;
        for (const auto& event : machine().events.of(EventKind::ValueSet)) {
            EXPECT_EQ(event.text, "HKEY_CURRENT_USER\\Software\\Bromvale");
            lines.push_back(event.caption);
        }
        return lines;
    }
};

using Lines = std::vector<std::string>;

TEST_F(OptionsOrder, OpeningWithNothingSetStoresTheDaysTheProxyAndItsFields) {
    frmMain();
    machine().events.clear();
    nav("Optionen");
    EXPECT_EQ(stored(), (Lines{"\"DelAfterDays\"=\"50\"", "\"Proxy\"=\"0\"", "\"ProxyAdresse\"=\"0.0.0.0\"",
                               "\"ProxyPort\"=\"80\""}));
    machine().events.clear();
    nav("Optionen");
    EXPECT_EQ(stored(), Lines{});
}

TEST_F(OptionsOrder, OpeningWithEverythingSetStoresInTheOrderOfTheLoading) {
    frmMain();  // before AutoScan, which would have it scan and end
    for (std::int16_t* setting : {&ScreenSave, &AutoClose, &AutoEntfernen, &AutoRegFileDel, &AutoScan,
                                  &RebootAfterDelete, &RebootAfterEntry, &AutoFileDelAfterReentry, &Proxy}) {
        *setting = 1;
    }
    ProxyPort = 0;
    machine().events.clear();
    nav("Optionen");
    EXPECT_EQ(stored(), (Lines{
                            "\"ScreenSave\"=\"1\"",
                            "\"AutoClose\"=\"1\"",
                            "\"AutoEntfernen\"=\"0\"",  // what it is when closing asks for it
                            "\"AutoEntfernen\"=\"1\"",
                            "\"AutoRegFileDel\"=\"1\"",
                            "\"AutoScan\"=\"1\"",
                            "\"RebootAfterDelete\"=\"1\"",
                            "\"AutoClose\"=\"1\"",
                            "\"AutoEntfernen\"=\"1\"",
                            "\"RebootAfterEntry\"=\"1\"",
                            "\"AutoFileDelAfterReentry\"=\"1\"",
                            "\"DelAfterDays\"=\"50\"",
                            "\"Proxy\"=\"1\"",
                            "\"ProxyAdresse\"=\"0.0.0.0\"",
                            "\"ProxyPort\"=\"80\"",  // by the repeated pass
                            "\"ProxyPort\"=\"80\"",
                        }));
}

TEST_F(OptionsOrder, AValueThatCannotBeWrittenKeepsNothingElseFromWorking) {
    nav("Optionen");
    machine().faults.fail("RegSetValueExA", 1, ERROR_ACCESS_DENIED);
    frmMain().options.chbAutoScan.userClick();
    EXPECT_EQ(frmMain().options.chbAutoScan.value(), 1);
    EXPECT_TRUE(frmMain().options.cmdÜbernehmen.enabled());
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "AutoScan"), "0");
    frmMain().options.chbProtokoll.userClick();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Protokoll"), "1");
}

TEST_F(OptionsOrder, ApplyingWithoutReadableSettingsDisablesTheButtonAllTheSame) {
    nav("Optionen");
    frmMain().options.chbAutoScan.userClick();
    machine().faults.fail("RegOpenKeyA", 1, ERROR_ACCESS_DENIED);
    frmMain().options.cmdÜbernehmen.userClick();
    EXPECT_FALSE(frmMain().options.cmdÜbernehmen.enabled());
    EXPECT_EQ(AutoScan, 0);
}

}  // namespace
}  // namespace bromvale::testing
