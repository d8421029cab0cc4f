#include "bromvale-offline/example.h"

#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"

extern const unsigned char embedded_machine_reg[];
extern const unsigned long embedded_machine_reg_size;
extern const unsigned char embedded_files_txt[];
extern const unsigned long embedded_files_txt_size;

namespace bromvale::offline {
namespace {

std::string_view textOf(const unsigned char* bytes, unsigned long size) {
    return {reinterpret_cast<const char*>(bytes), size};
}

// One whole path a line; a folder ends in a backslash.
void makeFiles(std::string_view list) {
    auto& drives = machine().drives;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find('\n'), list.size());
        std::string path = ansiFromUtf8(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
        if (path.ends_with('\r')) path.pop_back();
        Location location;
        if (path.empty() || drives.locate(path, location) != 0 || location.onHost) continue;
        if (path.ends_with('\\')) {
            drives.makeFolder(path);
        } else {
            drives.writeFile(path, "");
        }
    }
}

}  // namespace

std::optional<RegFileError> loadExample() {
    makeFiles(textOf(embedded_files_txt, embedded_files_txt_size));
    return loadRegText(textOf(embedded_machine_reg, embedded_machine_reg_size), "example machine",
                       machine().registry);
}

}  // namespace bromvale::offline
