#include "cleanup/browse_for_folder.h"

#include <array>

#include "cleanup/folder_paths.h"
#include "core/log.h"
#include "platform/exact/machine.h"
#include "platform/exact/text.h"
#include "platform/folder_dialog.h"

namespace bromvale {

std::string BrowseForFolder(WindowHandle owner) {
    std::array<char, MAX_PATH> displayName{};
    BROWSEINFOA info{};
    info.hwndOwner = owner;
    info.pszDisplayName = displayName.data();
    info.lpszTitle = "Wähle den Ordner, aus den die Dateien gelöscht werden sollen.";
    info.ulFlags = BIF_RETURNONLYFSDIRS;
    const auto list = SHBrowseForFolderA(&info);
    if (list == nullptr) return {};
    std::string path = exactPathFromIdList(list);
    CoTaskMemFree(list);
    const std::string reason = path.empty() ? std::string() : refusalOf(path);
    if (reason.empty()) return path;
    MsgBox("Der Ordner " + plainText(path) + " kann nicht in die Liste aufgenommen werden.\r\n" + reason,
           kStyleInformation);
    return {};
}

}  // namespace bromvale
