#include "core/registry_layer.h"
#include "platform/offline/files/api.h"
#include "platform/offline/machine.h"
#include "tests/support/provider.h"

namespace bromvale::testing {
namespace {

std::u16string wholePath(HKEY hive, std::u16string_view path) {
    const std::string_view name = HiveName(handleNumber(hive));
    std::u16string whole(name.begin(), name.end());
    return whole.append(u"\\").append(path);
}

}  // namespace

bool makeTrueKey(HKEY hive, std::u16string_view path) {
    return offline::machine().registry.createKey(wholePath(hive, path));
}

bool setTrueString(HKEY hive, std::u16string_view path, std::u16string_view name, std::u16string_view text) {
    return offline::machine().registry.setText(wholePath(hive, path), name, text);
}

bool trueKeyExists(HKEY hive, std::u16string_view path) {
    return offline::machine().registry.exists(wholePath(hive, path));
}

bool writeTrueFile(const std::u16string& path, std::string_view bytes) {
    return offline::machine().drives.writeFile(path, bytes);
}

bool makeTrueFolder(const std::u16string& path) {
    return offline::machine().drives.makeFolder(path);
}

bool trueFileExists(const std::u16string& path) {
    return offline::machine().drives.exists(path);
}

// The machine as it is by default: Windows XP, German, a drive C: in memory, empty hives.
std::string beginTest() {
    std::string folder = "C:\\Programme\\Bromvale\\";
    offline::machine().drives.makeFolder(folder);
    return folder;
}

// Nothing to take back: the machine ends with the process.
void endTest(const std::string&) {}

void answerNextBox(int id) {
    offline::machine().answers.push_back(id);
}

const std::vector<ShownBox>& shownBoxes() {
    static std::vector<ShownBox> boxes;
    boxes.clear();
    for (const offline::Event& event : offline::machine().events.of(offline::EventKind::MessageBox)) {
        boxes.push_back({event.text, event.caption, event.number});
    }
    return boxes;
}

}  // namespace bromvale::testing
