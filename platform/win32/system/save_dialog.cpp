#include <cstring>

#include "platform/dialogs.h"
#include "platform/win32/system/windows.h"

#include <commdlg.h>

namespace bromvale {

std::string askWhereToSave(const std::string& suggestedName) {
    char path[MAX_PATH] = {};
    std::strncpy(path, suggestedName.c_str(), MAX_PATH - 1);
    OPENFILENAMEA dialog{};
    dialog.lStructSize = OPENFILENAME_SIZE_VERSION_400A;  // the one that Windows 98 and NT4 take
    dialog.hwndOwner = GetActiveWindow();
    dialog.lpstrFilter = "Programme (*.exe)\0*.exe\0Alle Dateien (*.*)\0*.*\0";
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrTitle = "Update speichern unter";
    dialog.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetSaveFileNameA(&dialog) ? path : std::string();
}

}  // namespace bromvale
