#include "platform/offline/files_api.h"
#include "platform/offline/machine.h"
#include "tests/support/provider.h"

namespace bromvale::testing {

// The machine as it is by default: Windows XP, German, a drive C: in memory, empty hives.
std::string beginTest() {
    const std::string folder = "C:\\Programme\\Bromvale\\";
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
