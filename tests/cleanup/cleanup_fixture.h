#pragma once
#include <string>
#include <vector>

#include "core/settings.h"
#include "core/state.h"
#include "platform/files.h"
#include "tests/support/test_machine.h"
#include "ui/frm_main.h"

namespace bromvale::testing {

using Texts = std::vector<std::string>;

inline constexpr int kLeft = 1;
inline constexpr int kRight = 2;
inline constexpr const char* kRunKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// The main window on a machine whose folder list is what the test says, in the program's folder, which is the
// current directory, too.
class CleanupTest : public TestMachine {
  protected:
    CleanupTest() {
        fillState();
        makeKey(HKEY_LOCAL_MACHINE, kRunKey);
    }

    static FrmMain& form() { return frmMain(); }
    static ListView& list() { return form().cleanup.lvwOrdnerList; }

    // The page over this list, as the user sees it who opens it.
    void openPage(std::string_view listFile) {
        writeWholeFile(listPath(), listFile);
        form().cleanup.Ordnerliste_laden();
        form().showPage(form().cleanup);
    }
    std::string listPath() { return folder() + "liste.txt"; }
    std::string listFile() { return readWholeFile(listPath()); }

    static Texts rows() {
        Texts result;
        for (int row = 1; row <= list().count(); ++row) result.push_back(list().item(row).text());
        return result;
    }

    // A folder of this test's own, for things to be deleted in; with its backslash.
    std::string makeBin(const std::string& name) {
        makeFolderOnDisk(folder() + name);
        return folder() + name + "\\";
    }
    static bool exists(const std::string& path) {
        return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    // Records of one routine without its tags.
    Texts logOf(const std::string& routine) {
        Texts lines;
        for (const std::string& line : logLines()) {
            const std::size_t at = line.find("; " + routine + "; ");
            if (at != std::string::npos) lines.push_back(line.substr(at + routine.size() + 4));
        }
        return lines;
    }
};

}  // namespace bromvale::testing
