#pragma once
#include <string>

#include "core/settings.h"
#include "core/state.h"
#include "scanner/search.h"
#include "tests/support/window_test.h"

namespace bromvale::testing {

inline constexpr const char* kUninstall = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

// The main window on a machine without installed programs.
class ProgramsTest : public WindowTest {
  protected:
    ProgramsTest() { form(); }

    static ListView& list() { return form().programs.lvwDeinstall; }

    static std::string keyOf(const std::string& name) { return std::string(kUninstall) + "\\" + name; }
    void program(HKEY hive, const std::string& key, const std::string& name, const std::string& command) {
        setString(hive, keyOf(key), "DisplayName", name);
        setString(hive, keyOf(key), "UninstallString", command);
    }
    static void openPage() { form().programs.mnuPopUpDeinstall_Click(); }

    // "name | command | root | key".
    static Texts rows() {
        Texts result;
        for (int row = 1; row <= list().count(); ++row) {
            const ListItem& item = list().item(row);
            result.push_back(item.column(kProgramName) + " | " + item.column(kUninstallCommand) + " | " +
                             item.column(kProgramHive) + " | " + item.column(kProgramKey));
        }
        return result;
    }
    static Texts names() { return rowTexts(list()); }
};

}  // namespace bromvale::testing
