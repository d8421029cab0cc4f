#include "cleanup/browse_for_folder.h"

#include <array>

#include "core/registry_layer.h"
#include "platform/folder_dialog.h"
#include "ui/frm_main.h"

namespace bromvale {

std::string BrowseForFolder() {
    std::array<char, MAX_PATH> displayName{};
    BROWSEINFOA info{};
    info.hwndOwner = frmMain().window();
    info.pszDisplayName = displayName.data();
    info.lpszTitle = "Wähle den Ordner, aus den die Dateien gelöscht werden sollen.";
    info.ulFlags = BIF_RETURNONLYFSDIRS;
    const auto list = SHBrowseForFolderA(&info);
    if (list == nullptr) return {};
    std::string path(MAX_PATH, '\0');
    static_cast<void>(SHGetPathFromIDListA(list, path.data()));
    CoTaskMemFree(list);
    return TrimNull(path);
}

}  // namespace bromvale
