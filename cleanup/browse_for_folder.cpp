#include "cleanup/browse_for_folder.h"

#include <array>

#include "core/registry_layer.h"
#include "platform/folder_dialog.h"
#include "ui/frm_main.h"

namespace bromvale {

namespace {

// A folder whose name the code page can't tell (see entry_names.h) would be taken for another one.
bool leadsElsewhere(const std::string& path) {
    return path.find_first_of("/*?\"<>|") != std::string::npos || path.find("\\\\", 1) != std::string::npos;
}

}  // namespace

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
    TrimNull(path);
    return leadsElsewhere(path) ? std::string() : path;
}

}  // namespace bromvale
