#pragma once
#include "cleanup/file_del.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/files.h"
#include "tests/support/window_test.h"

namespace bromvale::testing {

inline constexpr const char* kRunKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// The main window on a machine whose folder list is what the test says, in the program's folder, which is the
// current directory, too.
class CleanupTest : public WindowTest {
  protected:
    CleanupTest() { makeKey(HKEY_LOCAL_MACHINE, kRunKey); }

    static ListView& list() { return form().cleanup.lvwOrdnerList; }
    static Texts rows() { return rowTexts(list()); }

    // The page over this list, as the user sees it who opens it.
    void openPage(std::string_view listFile) {
        writeWholeFile(listPath(), listFile);
        form().cleanup.Ordnerliste_laden();
        form().showPage(form().cleanup);
    }
    std::string listPath() { return folder() + "liste.txt"; }
    std::string listFile() { return readWholeFile(listPath()); }

    // A folder of this test's own, for things to be deleted in; with its backslash.
    std::string makeBin(const std::string& name) {
        makeFolderOnDisk(folder() + name);
        return folder() + name + "\\";
    }
    static bool exists(const std::string& path) {
        return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    }
    static void empty(std::string path) { FileDel(path, ""); }
};

}  // namespace bromvale::testing
