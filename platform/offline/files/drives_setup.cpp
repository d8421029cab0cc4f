// The drives for those who set up a machine and look at it.
#include <algorithm>

#include "platform/offline/files/drives.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {

DWORD Drives::locate(const WideText& path, Location& location) const {
    location.path = StoredText(path.view()).view();
    return locateReal(location.path, location);
}

bool Drives::makeFolder(const WideText& path) {
    Location location;
    return locate(path, location) == 0 && makeFolders(location);
}

bool Drives::makeFolders(const Location& location) {
    for (std::size_t count = 1; count <= location.count; ++count) {
        const DWORD error = location.volume->makeFolder(location.all().first(count));
        if (error != 0 && error != ERROR_ALREADY_EXISTS) return false;
    }
    return true;
}

bool Drives::writeFile(const WideText& path, std::string_view bytes) {
    Location location;
    if (locate(path, location) != 0 || location.count == 0) return false;
    const std::size_t folders = location.count - 1;
    for (std::size_t count = 1; count <= folders; ++count)
        (void)location.volume->makeFolder(location.all().first(count));
    std::unique_ptr<OpenedFile> file;
    if (location.volume->open(location.all(), true, file) != 0) return false;
    return file->truncate(0) == 0 && file->write(0, bytes.data(), static_cast<DWORD>(bytes.size())) == 0;
}

std::optional<std::string> Drives::readFile(const WideText& path) const {
    Location location;
    std::unique_ptr<OpenedFile> file;
    if (locate(path, location) != 0 || location.volume->open(location.all(), false, file) != 0)
        return std::nullopt;
    std::string bytes(file->size(), '\0');
    DWORD done = 0;
    if (file->read(0, bytes.data(), static_cast<DWORD>(bytes.size()), done) != 0) return std::nullopt;
    bytes.resize(done);
    return bytes;
}

bool Drives::exists(const WideText& path) const {
    Location location;
    return locate(path, location) == 0 && location.volume->find(location.all(), nullptr) == 0;
}

bool Drives::setFileTime(const WideText& path, const SYSTEMTIME& local) {
    Location location;
    std::unique_ptr<OpenedFile> file;
    if (locate(path, location) != 0 || location.volume->open(location.all(), false, file) != 0) return false;
    file->setWritten(fromSystemTime(local) + clock.bias);
    return true;
}

bool Drives::erase(const WideText& path) {
    Location location;
    return locate(path, location) == 0 && location.volume->remove(location.all()) == 0;
}

void Drives::protect(const WideText& folder) {
    Location location;
    if (locate(folder, location) == 0) protected_.push_back(location.text());
}

bool Drives::isProtected(const Location& location) const {
    const std::string path = location.text() + "\\";
    return std::ranges::any_of(protected_, [&](std::string folder) {
        if (!folder.ends_with('\\')) folder += '\\';
        return path.size() >= folder.size() && sameStored(path.substr(0, folder.size()), folder);
    });
}

bool Drives::linkFolder(const WideText& link, const WideText& target) {
    Location location;
    return locate(link, location) == 0 && location.count > 0 &&
           location.volume->linkFolder(location.all(), StoredText(target.view()).view()) == 0;
}

}  // namespace bromvale::offline
