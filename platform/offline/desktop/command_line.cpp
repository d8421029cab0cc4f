#include "platform/offline/desktop/process_api.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {
namespace {

constexpr std::string_view kBlanks = " \t";

bool isFile(const std::string& path) {
    Location location;
    FileInfo info;
    const StoredText stored{std::string_view(path)};
    return machine().drives.locateStored(stored.view(), location) == 0 && location.count > 0 &&
           location.volume->find(location.all(), &info) == 0 &&
           (info.attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// The name with its extension.
std::string withExtension(std::string_view name) {
    const std::size_t slash = name.find_last_of("\\/:");
    const std::string_view last = slash == std::string_view::npos ? name : name.substr(slash + 1);
    return std::string(name).append(last.find('.') == std::string_view::npos ? ".exe" : "");
}

std::string search(std::string_view name) {
    if (name.empty()) return {};
    const std::string file = withExtension(name);
    if (name.find_first_of("\\/:") != std::string_view::npos) return isFile(file) ? file : std::string();
    const std::string current(AnsiText(machine().drives.currentDirectory).view());
    for (const std::string& folder :
         {machine().appPath(), current, machine().systemFolder(), machine().windowsFolder()}) {
        std::string path = folder + "\\" + file;
        if (isFile(path)) return path;
    }
    return {};
}

}  // namespace

std::string programOf(std::string_view commandLine) {
    const std::size_t start = commandLine.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return {};
    const std::string_view line = commandLine.substr(start);
    if (line.front() == '"') return search(line.substr(1, line.find('"', 1) - 1));
    for (std::size_t end = line.find_first_of(kBlanks);; end = line.find_first_of(kBlanks, end + 1)) {
        std::string found = search(line.substr(0, end));
        if (!found.empty() || end == std::string_view::npos) return found;
    }
}

}  // namespace bromvale::offline
