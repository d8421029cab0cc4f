// The drives for those who set up a machine and look at it.
#include "platform/offline/files/drives.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {

DWORD Drives::locate(std::u16string_view path, Location& location) const {
    location.path = StoredText(path).view();
    return locateReal(location.path, location);
}

DWORD Drives::locate(std::string_view path, Location& location) const {
    location.path = storedFromAnsi(path);
    return locateReal(location.path, location);
}

// By real names -----------------------------------------------------------------------------------

bool Drives::makeFolder(std::u16string_view path) {
    Location location;
    if (locate(path, location) != 0) return false;
    for (std::size_t count = 1; count <= location.count; ++count) {
        const DWORD error = location.volume->makeFolder(location.all().first(count));
        if (error != 0 && error != ERROR_ALREADY_EXISTS) return false;
    }
    return true;
}

bool Drives::writeFile(std::u16string_view path, std::string_view bytes) {
    Location location;
    if (locate(path, location) != 0 || location.count == 0) return false;
    const std::size_t folders = location.count - 1;
    for (std::size_t count = 1; count <= folders; ++count)
        (void)location.volume->makeFolder(location.all().first(count));
    std::unique_ptr<OpenedFile> file;
    if (location.volume->open(location.all(), true, file) != 0) return false;
    return file->truncate(0) == 0 && file->write(0, bytes.data(), static_cast<DWORD>(bytes.size())) == 0;
}

std::optional<std::string> Drives::readFile(std::u16string_view path) const {
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

bool Drives::exists(std::u16string_view path) const {
    Location location;
    return locate(path, location) == 0 && location.volume->find(location.all(), nullptr) == 0;
}

bool Drives::setFileTime(std::u16string_view path, const SYSTEMTIME& local) {
    Location location;
    std::unique_ptr<OpenedFile> file;
    if (locate(path, location) != 0 || location.volume->open(location.all(), false, file) != 0) return false;
    file->setWritten(fromSystemTime(local) + currentClock().bias);
    return true;
}

bool Drives::erase(std::u16string_view path) {
    Location location;
    return locate(path, location) == 0 && location.volume->remove(location.all()) == 0;
}

bool Drives::linkFolder(std::u16string_view link, std::u16string_view target) {
    Location location;
    return locate(link, location) == 0 && location.count > 0 &&
           location.volume->linkFolder(location.all(), StoredText(target).view()) == 0;
}

// In Windows-1252 ---------------------------------------------------------------------------------

bool Drives::makeFolder(std::string_view path) {
    return makeFolder(utf16FromAnsi(path));
}

bool Drives::writeFile(std::string_view path, std::string_view bytes) {
    return writeFile(utf16FromAnsi(path), bytes);
}

std::optional<std::string> Drives::readFile(std::string_view path) const {
    return readFile(utf16FromAnsi(path));
}

bool Drives::exists(std::string_view path) const {
    return exists(utf16FromAnsi(path));
}

bool Drives::setFileTime(std::string_view path, const SYSTEMTIME& local) {
    return setFileTime(utf16FromAnsi(path), local);
}

bool Drives::erase(std::string_view path) {
    return erase(utf16FromAnsi(path));
}

}  // namespace bromvale::offline
