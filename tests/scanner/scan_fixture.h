#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "core/registry_layer.h"
#include "core/settings.h"
#include "core/state.h"
#include "scanner/registry_checks.h"
#include "scanner/search.h"
#include "tests/support/test_machine.h"
#include "ui/frm_main.h"

namespace bromvale::testing {

using Texts = std::vector<std::string>;

// A machine with an empty registry and the main window; what a scan wrote, in a form that can be compared as
// a whole.
class ScanTest : public TestMachine {
  protected:
    ScanTest() { fillState(); }

    static FrmMain& form() { return frmMain(); }
    static void scan() { form().scan.cmdStart_Click(); }
    static const std::string& report() { return form().scan.lblScanBericht.caption(); }
    static const std::string& panel(int number) { return form().StatusBar_.panelText(number); }
    static const std::string& caption() { return form().scan.cmdStart.caption(); }

    // "KeyLine | ValueName | ValueData | HiveHandle", in the order that the list shows.
    static Texts rows() {
        Texts result;
        for (int row = 1; row <= form().scan.lvwRegKeys.count(); ++row) {
            const ListItem& item = form().scan.lvwRegKeys.item(row);
            result.push_back(item.column(kKeyLine) + " | " + item.column(kValueName) + " | " +
                             item.column(kValueData) + " | " + item.column(kHiveHandle));
        }
        return result;
    }

    // Collected lines without element 0.
    static Texts collect(std::string_view key, std::int32_t hive = kHiveLocalMachine) {
        SearchSpec spec;
        spec.SearchKey = key;
        spec.SearchHive = hive;
        ScanLines lines(1);
        FindString(spec, lines);
        EXPECT_EQ(spec.SearchKey, key);
        EXPECT_EQ(lines.at(0), "");
        return {lines.begin() + 1, lines.end()};
    }

    // An entry as phase 2 hands it on, a second time where it closed a group. `key` without its "]".
    static void enter(std::string_view key, std::string_view name, std::string_view value,
                      std::int32_t hive = kHiveLocalMachine) {
        const std::string bracketed = std::string(key) + "]";
        do {
            entryGroup().repeat = false;
            checkOnce({hive, HiveName(hive), bracketed, name, value});
        } while (entryGroup().repeat);
    }
    // The same without the second time. `entry.key` with its "]".
    static void checkOnce(const Entry& entry) {
        CheckReg(entry, entryGroup(), form().scan);
        CheckQuerVerbindung(entry, entryGroup(), form().scan);
    }
    // Ends the object before: the first entry of another one, which then stands alone in the group.
    static void closeGroup() { enter("software\\classes\\clsid\\{zzzz}", "@", "ende"); }

    // One GUID key per fault below HKEY_LOCAL_MACHINE's classes, and behind them one sound key with so many
    // values that a scan meets `entries` entries in all. Nine of them are the start keys.
    void fillRegistry(int entries, int faults) {
        const std::string base = "Software\\Classes\\CLSID\\{";
        for (int i = 0; i < faults; ++i) makeKey(HKEY_LOCAL_MACHINE, base + numbered(i) + "}");
        const std::string sound = base + "FFFF}";
        makeKey(HKEY_LOCAL_MACHINE, sound);
        for (int i = 0; i < entries - faults - 9; ++i)
            setString(HKEY_LOCAL_MACHINE, sound, std::string("w") + numbered(i), "x");
    }

  private:
    static std::string numbered(int number) {
        const std::string digits = std::to_string(number);
        return std::string(6 - digits.size(), '0') + digits;
    }
};

// Runs `look` at every pump from now on.
class EveryPump : public ScanTest {
  protected:
    void atEveryPump(const std::function<void()>& look) {
        atPump(1, [this, look] {
            look();
            atEveryPump(look);
        });
    }
};

}  // namespace bromvale::testing
