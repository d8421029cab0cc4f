// Paths as the registry of the disk writes them, and where they lead.
#include <algorithm>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/hives/hive_values.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {

char16_t upperLetter(char16_t letter) {
    return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - 0x20) : letter;
}

bool isWindowsPath(std::u16string_view path) {
    return path.size() >= 2 && path[1] == u':' && upperLetter(path[0]) >= u'A' &&
           upperLetter(path[0]) <= u'Z';
}

std::u16string lastNameOf(std::u16string_view path) {
    while (!path.empty() && path.back() == u'\\') path.remove_suffix(1);
    return std::u16string(path.substr(path.rfind(u'\\') + 1));
}

std::string shown(std::u16string_view text) {
    return utf8FromStored(storedFromWide(text));
}

void replaceVariable(std::u16string& text, std::u16string_view name, std::u16string_view value) {
    const std::u16string mark = u"%" + std::u16string(name) + u"%";
    for (std::size_t at = 0; at + mark.size() <= text.size(); ++at) {
        if (!sameName(std::u16string_view(text).substr(at, mark.size()), mark)) continue;
        text.replace(at, mark.size(), value);
        at += value.size();
        if (at > 0) --at;
    }
}

std::u16string DiskSearch::expanded(std::u16string text) const {
    const std::u16string drive{static_cast<char16_t>(disk.letter), u':'};
    replaceVariable(text, u"SystemRoot", disk.windowsFolder);
    replaceVariable(text, u"windir", disk.windowsFolder);
    replaceVariable(text, u"SystemDrive", drive);
    if (!disk.programFiles.empty()) replaceVariable(text, u"ProgramFiles", disk.programFiles);
    return text;
}

const InsideFolder* DiskSearch::driveOf(std::u16string_view path) const {
    if (!isWindowsPath(path)) return nullptr;
    const auto letter = static_cast<char>(upperLetter(path[0]));
    if (letter == disk.letter) return &drive;
    const auto other = otherDrives.find(letter);
    return other == otherDrives.end() ? nullptr : &other->second;
}

InsidePath DiskSearch::hostPath(std::u16string_view path) const {
    const InsideFolder* const folder = driveOf(path);
    return folder == nullptr ? InsidePath() : folder->find(folder->root(), storedFromWide(path.substr(2)));
}

void placeOnDrive(DiskSearch& search, std::u16string_view systemRoot) {
    WindowsDisk& disk = search.disk;
    const std::string own = disk.folder.substr(disk.folder.rfind('/') + 1);
    std::string path = disk.folder;
    std::u16string_view rest = systemRoot;
    bool fits = isWindowsPath(systemRoot);
    if (fits) disk.letter = static_cast<char>(upperLetter(systemRoot[0]));
    while (fits && rest.size() > 2) {
        while (rest.size() > 2 && rest.back() == u'\\') rest.remove_suffix(1);
        if (rest.size() <= 2) break;
        const std::u16string name = lastNameOf(rest);
        fits = sameStored(storedFromWide(name), storedFromUtf8(path.substr(path.rfind('/') + 1)));
        rest.remove_suffix(std::min(name.size(), rest.size() - 2));
        path.resize(std::max<std::size_t>(path.rfind('/'), 1));
    }
    fits = fits && rest.size() <= 2;
    disk.windowsFolder = systemRoot;
    while (disk.windowsFolder.ends_with(u'\\')) disk.windowsFolder.pop_back();
    if (!fits) {
        path = disk.folder.substr(0, std::max<std::size_t>(disk.folder.rfind('/'), 1));
        disk.windowsFolder = std::u16string{static_cast<char16_t>(disk.letter), u':', u'\\'} +
                             wideFromStored(storedFromUtf8(own));
        search.warn("Windows calls its folder " +
                    (systemRoot.empty() ? "by no name" : "\"" + shown(systemRoot) + "\"") +
                    ", but it lies in " + disk.folder + "; it is taken for " + shown(disk.windowsFolder) +
                    ".");
    }
    search.drive = InsideFolder(path, disk.letter);
    disk.root = search.drive.root();
}

}  // namespace bromvale::offline
