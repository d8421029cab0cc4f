#include "cleanup/folder_paths.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "cleanup/entry_names.h"
#include "core/log.h"
#include "platform/exact/text.h"

namespace bromvale {
namespace {

constexpr std::string_view kNotWhole =
    "Der Pfad ist nicht vollständig: er beginnt weder mit einem Laufwerk noch mit einer Netzwerkfreigabe.";
constexpr std::string_view kTwoSeparators = "Im Pfad stehen zwei Trennzeichen hintereinander.";
constexpr std::string_view kTooLong = "Der Pfad ist zu lang.";
constexpr std::string_view kInexact =
    "Der Pfad enthält Zeichen, die dieses Programm nicht genau wiedergeben kann.";

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The bytes mean the same there and back. On code pages of several bytes a character they do so for ASCII.
bool comesThrough(std::string_view path) {
    return isExact(path) && exactText(wideText(path)) == path;
}

// What stands behind the drive or the two backslashes of a share; of a share there are two components at
// least. False for a path that isn't whole.
bool takeRoot(std::string_view path, std::string_view& rest) {
    const bool drive = path.size() >= 3 && isLetter(path[0]) && path[1] == ':' && path[2] == '\\';
    const bool share = path.starts_with("\\\\");
    rest = path.substr(std::min(path.size(), std::size_t{drive ? 3u : 2u}));
    return drive || (share && rest.find('\\') + 1 < rest.size() && rest.find('\\') != std::string_view::npos);
}

// The first component that isn't what it seems, where there is one. Only the one backslash that may stand at
// the end of a path is none too many: "C:\\" is what a folder of a wide backslash looks like.
std::optional<std::string_view> unsoundPart(std::string_view rest) {
    if (rest.empty()) return std::nullopt;
    if (rest.size() > 1 && rest.ends_with('\\')) rest.remove_suffix(1);
    for (;;) {
        const std::size_t end = rest.find('\\');
        const std::string_view part = rest.substr(0, end);
        if (!isPlainName(part)) return part;
        if (end == std::string_view::npos) return std::nullopt;
        rest.remove_prefix(end + 1);
    }
}

bool canBeListed(std::string_view path) {
    return fitsPath(withBackslash(path) + "*.*");
}

}  // namespace

std::string refusalOf(std::string_view path) {
    std::string_view rest;
    if (!comesThrough(path)) return std::string(kInexact);
    if (!takeRoot(path, rest)) return std::string(kNotWhole);
    if (const auto part = unsoundPart(rest)) {
        if (part->empty()) return std::string(kTwoSeparators);
        return "Windows liest den Teil \"" + std::string(*part) + "\" des Pfads anders, als er dort steht.";
    }
    return canBeListed(path) ? std::string() : std::string(kTooLong);
}

void tellRefused(const RefusedFolders& refused) {
    constexpr std::size_t kMost = 10;  // a box that is higher than the screen has no button
    if (refused.empty()) return;
    std::string text = "Diese Ordner der Liste wurden nicht geleert:";
    for (std::size_t i = 0; i < std::min(refused.size(), kMost); ++i)
        text += "\r\n\r\n" + plainText(refused[i].path) + "\r\n" + refused[i].reason;
    if (refused.size() > kMost)
        text += "\r\n\r\n... und " + std::to_string(refused.size() - kMost) + " weitere.";
    MsgBox(text, kStyleInformation);
}

}  // namespace bromvale
