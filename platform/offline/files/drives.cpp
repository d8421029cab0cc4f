#include "platform/offline/files/drives.h"

#include <algorithm>
#include <cstdlib>

#include "platform/offline/files/other_half.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestLiteralPath = 32767;

bool isSlash(char c) {
    return c == '\\' || c == '/';
}

// Letter to index, or -1.
int driveIndex(char letter) {
    const char up = upper(letter);
    return up >= 'A' && up <= 'Z' ? up - 'A' : -1;
}

bool isForbidden(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '<' || c == '>' || c == '"' || c == '|' || c == ':';
}

// Names that stand for themselves, but for doubled backslashes.
DWORD appendLiteral(std::string_view rest, Location& location) {
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find('\\'));
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        if (name.empty()) continue;
        if (std::any_of(name.begin(), name.end(), isForbidden) || unitCount(name) > kLongestName)
            return ERROR_INVALID_NAME;
        if (location.count == Location::kMostNames) return ERROR_FILENAME_EXCED_RANGE;
        location.names[location.count++] = name;
    }
    return 0;
}

// Appends the names of `rest` to the location: doubled slashes count as one, "." and ".." are gone through.
DWORD appendNames(std::string_view rest, bool literal, Location& location) {
    if (literal) return appendLiteral(rest, location);
    bool cut = false;
    for (std::size_t at = 0; at < rest.size();) {
        if (isSlash(rest[at])) {
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < rest.size() && !isSlash(rest[end])) {
            if (isForbidden(rest[end])) return ERROR_INVALID_NAME;
            ++end;
        }
        std::string_view name = rest.substr(at, end - at);
        const bool last = end == rest.size();
        at = end;
        if (name == ".") continue;
        if (name == "..") {
            if (location.count > 0) --location.count;
            continue;
        }
        // Windows drops trailing dots and blanks of the last name, and one dot of the others.
        if (last) {
            while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.remove_suffix(1);
        } else if (name.back() == '.') {
            name.remove_suffix(1);
        }
        if (name.empty()) continue;
        if (location.count == Location::kMostNames) return ERROR_FILENAME_EXCED_RANGE;
        location.names[location.count++] = name;
        cut = cut || unitCount(name) > kLongestName;
    }
    return cut ? ERROR_INVALID_NAME : 0;
}

constexpr std::string_view kLiteral = "\\\\?\\";
constexpr std::string_view kLiteralShare = "\\\\?\\UNC\\";

std::string shareKey(std::string_view server, std::string_view share) {
    return upperStored(server) + "\\" + upperStored(share);
}

}  // namespace

bool holdsWildcards(std::string_view path) {
    if (path.starts_with(kLiteral)) path.remove_prefix(kLiteral.size());
    return path.find_first_of("*?") != std::string_view::npos;
}

std::string Location::rootText() const {
    return root[0] != '\0' ? std::string{root[0], ':'}
                           : "\\\\" + std::string(server) + "\\" + std::string(share);
}

std::string Location::text() const {
    std::string text = rootText();
    for (const std::string_view name : all()) text.append("\\").append(name);
    if (count == 0) text += "\\";
    return text;
}

void Drives::mount(char letter, Mounted&& mounted) {
    const int index = driveIndex(letter);
    if (index >= 0) drives_[static_cast<std::size_t>(index)] = std::move(mounted);
}

void Drives::addMemory(char letter) {
    mount(letter, {makeMemoryVolume(*this), false});
}

void Drives::mountFolder(char letter, const std::string& hostFolder, std::optional<char> disk) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(hostFolder.c_str(), nullptr), std::free);
    const std::string realFolder = real != nullptr ? real.get() : "";
    mount(letter, {makeHostVolume(*this, hostFolder, disk), true, realFolder});
}

void Drives::addFolder(char letter, const std::string& hostFolder) {
    mountFolder(letter, hostFolder, std::nullopt);
}

void Drives::addDisk(char letter, const std::string& hostFolder) {
    mountFolder(letter, hostFolder, letter);
}

void Drives::addShare(std::string_view server, std::string_view share) {
    shares_[shareKey(storedFromAnsi(server), storedFromAnsi(share))] = {makeMemoryVolume(*this), false};
}

void Drives::remove(char letter) {
    mount(letter, {});
}

bool Drives::has(char letter) const {
    const int index = driveIndex(letter);
    return index >= 0 && drives_[static_cast<std::size_t>(index)].volume != nullptr;
}

std::string Drives::pathOfHost(std::string_view hostPath) const {
    for (std::size_t i = 0; i < drives_.size(); ++i) {
        const std::string& folder = drives_[i].hostFolder;
        const bool below = !folder.empty() && hostPath.starts_with(folder) &&
                           (hostPath.size() == folder.size() || hostPath[folder.size()] == '/');
        if (!below) continue;
        std::string path = storedFromUtf8(hostPath.substr(folder.size()));
        std::replace(path.begin(), path.end(), '/', '\\');
        return std::string{static_cast<char>('A' + i), ':'} + (path.empty() ? "\\" : path);
    }
    return {};
}

DWORD Drives::locateShare(std::string_view path, bool literal, Location& location) const {
    std::string_view rest = path.substr(2);
    const auto cut = [&rest] {
        const std::string_view name = rest.substr(0, rest.find_first_of("\\/"));
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        return name;
    };
    location.server = cut();
    location.share = cut();
    if (location.server.empty() || location.share.empty()) return ERROR_BAD_PATHNAME;
    const auto share = shares_.find(shareKey(location.server, location.share));
    if (share == shares_.end()) {
        const std::string server = shareKey(location.server, "");
        const auto near = shares_.lower_bound(server);
        return near != shares_.end() && near->first.starts_with(server) ? ERROR_BAD_NET_NAME
                                                                        : ERROR_BAD_NETPATH;
    }
    location.volume = share->second.volume.get();
    location.onHost = share->second.onHost;
    return appendNames(rest, literal, location);
}

DWORD Drives::locateStored(std::string_view path, Location& location) const {
    const DWORD error = locateReal(path, location);
    if (error == 0) otherHalf_.lead(location);
    return error;
}

DWORD Drives::locateReal(std::string_view path, Location& location) const {
    location.count = 0;
    location.root[0] = '\0';
    const bool literal = path.starts_with(kLiteral);
    const std::size_t limit = literal ? kLongestLiteralPath : std::size_t{2} * MAX_PATH;
    if (path.empty() || (path.size() >= limit && unitCount(path) >= limit)) return ERROR_PATH_NOT_FOUND;
    if (path.starts_with(kLiteralShare))
        return locateShare(path.substr(kLiteralShare.size() - 2), true, location);
    if (literal) path.remove_prefix(kLiteral.size());
    if (path.size() >= 2 && isSlash(path[0]) && isSlash(path[1])) return locateShare(path, false, location);

    const std::string_view current = currentDirectory;
    const bool hasLetter = path.size() >= 2 && path[1] == ':' && driveIndex(path[0]) >= 0;
    const char letter = hasLetter ? path[0] : current[0];
    std::string_view rest = hasLetter ? path.substr(2) : path;
    const bool fromRoot = !rest.empty() && isSlash(rest[0]);
    if (!hasLetter && !fromRoot && isSlash(current[0])) {
        if (const DWORD error = locateShare(current, false, location)) return error;
        return appendNames(rest, literal, location);
    }
    const int index = driveIndex(letter);
    if (index < 0) return ERROR_PATH_NOT_FOUND;
    const Mounted& mounted = drives_[static_cast<std::size_t>(index)];
    location.root[0] = upper(letter);
    if (mounted.volume == nullptr) return ERROR_PATH_NOT_FOUND;
    location.volume = mounted.volume.get();
    location.onHost = mounted.onHost;
    if (!fromRoot && upper(letter) == upper(current[0]) && current.size() > 2) {
        if (const DWORD error = appendNames(current.substr(2), false, location)) return error;
    }
    return appendNames(rest, literal, location);
}

bool Drives::isElsewhere(std::string_view path) const {
    if (!othersAreElsewhere) return false;
    const bool literal = path.starts_with(kLiteral);
    if (literal) path.remove_prefix(kLiteral.size());
    if (path.size() >= 2 && isSlash(path[0]) && isSlash(path[1])) {
        Location location;
        return locateShare(path, false, location) != 0;
    }
    if (path.size() >= 2 && path[1] == ':')
        return driveIndex(path[0]) >= 0 && (!has(path[0]) || isBesidesOwn(path));
    // Shares, volumes and devices behind the prefix.
    return literal;
}

bool Drives::isBesidesOwn(std::string_view path) const {
    if (ownFolder.empty() || upper(path[0]) != upper(ownFolder[0])) return false;
    const std::string_view start = path.substr(0, ownFolder.size());
    const bool below = path.size() == start.size() || isSlash(path[start.size()]);
    return !below || !sameStored(start, ownFolder);
}

void Drives::makeOwnFolders(const Location& location) const {
    if (location.count == 0) return;
    for (const std::string& folder : ownFolders) {
        Location own;
        if (locateReal(folder, own) != 0 || own.volume != location.volume || own.count >= location.count)
            continue;
        const auto same = [](std::string_view left, std::string_view right) {
            return sameStored(left, right);
        };
        if (!std::equal(own.names.begin(), own.names.begin() + static_cast<std::ptrdiff_t>(own.count),
                        location.names.begin(), same)) {
            continue;
        }
        for (std::size_t count = 1; count <= own.count; ++count)
            (void)own.volume->makeFolder(own.all().first(count));
    }
}

}  // namespace bromvale::offline
