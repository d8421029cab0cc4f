#include "platform/rights.h"

#include <memory>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace bromvale {
namespace {

constexpr int kMostWaits = 100;
constexpr Milliseconds kWait = 100;

}  // namespace

bool couldHaveMoreRights() {
    return machine().lacksMachineRights() && machine().rights.token == Rights::Token::Limited;
}

bool startWithMoreRights(FunctionRef<bool()> runs) {
    Rights& rights = machine().rights;
    rights.asked.push_back({ansiFromStored(machine().programPath()), machine().commandLine,
                            ansiFromStored(machine().drives.currentDirectory)});
    if (rights.answer != Rights::Answer::Agrees) return false;
    if (rights.startsAtOnce) machine().previousInstance = true;
    for (int i = 0; i < kMostWaits && !runs(); ++i) machine().clock.advance(kWait);
    return true;
}

bool lacksMachineRights() {
    return machine().lacksMachineRights();
}

// The file is gone before anybody may look, so nothing is recorded. The program's own folder may come into
// being with the first file that is written there.
bool takesFiles(const std::string& folder) {
    Drives& drives = machine().drives;
    Location location;
    if (drives.locate(folder + "bromvale.tmp", location) != 0 || drives.isProtected(location)) return false;
    if (location.count > 0 && location.volume->find(location.parent(), nullptr) != 0)
        return folder == machine().appPath() + "\\";
    std::unique_ptr<OpenedFile> file;
    if (location.count == 0 || location.volume->open(location.all(), true, file) != 0) return false;
    file.reset();
    return location.volume->remove(location.all()) == 0;
}

}  // namespace bromvale
