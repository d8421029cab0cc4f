#pragma once
#include <string>
#include <vector>

#include "core/settings.h"
#include "core/state.h"
#include "scanner/search.h"
#include "tests/support/test_machine.h"
#include "ui/frm_main.h"

namespace bromvale::testing {

using Texts = std::vector<std::string>;

inline constexpr int kLeft = 1;
inline constexpr int kRight = 2;
inline constexpr const char* kUninstall = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

// The main window on a machine without installed programs.
class ProgramsTest : public TestMachine {
  protected:
    ProgramsTest() {
        fillState();
        form();
    }

    static FrmMain& form() { return frmMain(); }
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
    static Texts names() {
        Texts result;
        for (int row = 1; row <= list().count(); ++row) result.push_back(list().item(row).text());
        return result;
    }
    [[nodiscard]] Texts asked() const {
        Texts result;
        for (const ShownBox& box : boxes()) result.push_back(box.text);
        return result;
    }
    // Records of this routine alone.
    [[nodiscard]] Texts logOf(const std::string& routine) {
        Texts result;
        for (const std::string& line : logLines()) {
            if (line.starts_with("frmMain; " + routine + "; "))
                result.push_back(line.substr(routine.size() + 11));
        }
        return result;
    }
};

}  // namespace bromvale::testing
