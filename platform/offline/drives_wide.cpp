// The drives by real names, for those who set up a machine and look at it.
#include "platform/offline/drives.h"

#include "platform/offline/other_half.h"
#include "platform/offline/stored_text.h"

namespace bromvale::offline {

DWORD Drives::locate(std::u16string_view path, Location& location) const {
    location.path = storedFromWide(path);
    return locate(std::string_view(location.path), location);
}

DWORD Drives::locateStored(std::string_view path, Location& location) const {
    const DWORD error = locate(path, location);
    if (error == 0) followRedirection(location);
    return error;
}

bool Drives::makeFolder(std::u16string_view path) {
    return makeFolder(storedFromWide(path));
}

bool Drives::writeFile(std::u16string_view path, std::string_view bytes) {
    return writeFile(storedFromWide(path), bytes);
}

std::optional<std::string> Drives::readFile(std::u16string_view path) const {
    return readFile(storedFromWide(path));
}

bool Drives::exists(std::u16string_view path) const {
    return exists(storedFromWide(path));
}

bool Drives::setFileTime(std::u16string_view path, const SYSTEMTIME& local) {
    return setFileTime(storedFromWide(path), local);
}

bool Drives::erase(std::u16string_view path) {
    return erase(storedFromWide(path));
}

}  // namespace bromvale::offline
