#include "bromvale-offline/rescue/scan_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <span>
#include <stdexcept>

#include "bromvale-offline/rescue/machine_plan.h"
#include "bromvale-offline/rescue/scan_wire.h"
#include "bromvale-offline/script.h"
#include "bromvale-offline/show.h"
#include "core/startup/main.h"
#include "platform/controls.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "ui/scan_page.h"

namespace bromvale::offline {
namespace {

constexpr std::uint64_t kProgressEvery = 4096;  // servings of events

ListView& rowsOfList() {
    auto* const list = as<ListView>(findControl("lvwRegKeys"));
    if (list == nullptr) throw ScriptError{"the program has no window"};
    return *list;
}

ResultRow rowOf(const ListView& list, std::size_t number) {
    const ListItem& item = list.item(static_cast<int>(number) + 1);
    return {item.column(kKeyLine), item.column(kValueName), item.column(kValueData), 0};
}

// A bar of the parts that are done ("37% fertig" is what the program says), over the one before.
void drawProgress() {
    if (const Control* const percent = findControl("lblScanProzent")) {
        const int done = std::clamp(std::atoi(percent->caption().c_str()), 0, 100);
        const std::string bar = std::string(static_cast<std::size_t>(done / 4), '#') +
                                std::string(static_cast<std::size_t>(25 - done / 4), '.');
        std::fprintf(stderr, "\r[%s] %3d%%", bar.c_str(), done);
    }
    machine().pump.at(kProgressEvery, drawProgress);
}

// A row knows its place in a hive only here, where the machine stands.
void findPlace(FoundRow& row, std::span<const std::shared_ptr<MountedHive>> hives) {
    const Registry& registry = machine().registry;
    const KeyOrigin origin = registry.tree().originOf(registry.seenAt(row.key));
    const auto found =
        std::ranges::find_if(hives, [&](const auto& hive) { return hive.get() == origin.source; });
    row.hive = static_cast<std::uint32_t>(found - hives.begin());
    row.place = origin.place;
}

// Rows that are not to go stay in the list: the program removes what is marked.
void removeByProgram(const std::vector<std::size_t>& rows, Transcript& transcript) {
    std::string numbers = "lvwRegKeys";
    for (const std::size_t row : rows) numbers += " " + std::to_string(row + 1);
    doAction("check", "chbRegKeysShow 1", transcript);
    doAction("check", "chbMarkierteKeysEntfernen 1", transcript);
    doAction("select", numbers, transcript);
    doAction("click", "cmdStart", transcript);
}

// The program takes an object's own key before those below it, which Windows NT refuses; a second run of it
// would find the key empty and take it then. Here nobody has to come twice.
void removeLeftBehind(std::vector<std::u16string> keys) {
    std::ranges::stable_sort(keys, std::greater(), &std::u16string::size);
    Registry& registry = machine().registry;
    for (const std::u16string& path : keys) {
        RegistryKey* const key = registry.seenAt(path);
        if (key != nullptr && !registry.isRoot(key) && key->subKeyCount() == 0) registry.tree().remove(key);
    }
}

void addWarnings(ScanResult& result, const MountedHive& hive) {
    for (const std::string& damage : hive.damages()) result.warnings.push_back("damaged: " + damage);
    result.damaged = result.damaged || hive.damageCount() > 0;
    if (hive.damageCount() > hive.damages().size())
        result.warnings.push_back(std::to_string(hive.damageCount()) +
                                  " keys of this hive are damaged in all");
    if (hive.unnameable() > 0)
        result.warnings.push_back(
            std::to_string(hive.unnameable()) +
            " keys or values have names that no function of Windows can be told; they are "
            "left alone");
}

// The complete copy lies on the machine's own drive, which ends with this process.
void addRemoved(ScanResult& result) {
    const Machine& machine = offline::machine();
    for (const std::string& path : machine.registry.tree().removedPaths())
        result.removedPaths.push_back(wideFromStored(path));
    const std::string folder = machine.appPath() + "\\Backup";
    Location location;
    std::vector<FileInfo> files;
    if (machine.drives.locateReal(folder, location) != 0 || location.volume->list(location.all(), files) != 0)
        return;
    const std::string start = storedFromAnsi("Vollständig_");
    for (const FileInfo& file : files) {
        if (file.name.starts_with(start))
            result.completeCopy =
                machine.drives.readFile(wideFromStored(folder + "\\" + file.name)).value_or("");
    }
}

// Tells the rows that the list shows; the keys of those that are to go.
std::vector<std::u16string> tellRows(const ScanRun& run, WireWriter& wire) {
    const ListView& list = rowsOfList();
    std::vector<std::u16string> going;
    std::size_t number = 0;
    explainRows(
        static_cast<std::size_t>(list.count()), [&list](std::size_t i) { return rowOf(list, i); },
        [&](FoundRow&& row) {
            findPlace(row, run.hives);
            writeRow(wire, row);
            if (run.remove && std::ranges::binary_search(*run.remove, number)) going.push_back(row.key);
            ++number;
        });
    return going;
}

ScanResult scanHere(const ScanRun& run, WireWriter& wire) {
    ScanResult result;
    run.setUp();
    Machine& machine = offline::machine();
    Transcript transcript;
    machine.pump.nextAction = [&] {
        startsScan();
        if (run.showProgress) machine.pump.at(kProgressEvery, drawProgress);
        doAction("click", "cmdStart", transcript);
        if (run.showProgress) std::fprintf(stderr, "\r%34s\r", "");
        result.report = utf8FromAnsi(findControl("lblScanBericht")->caption());
        result.elsewhere = machine.drives.soughtElsewhere;
        std::vector<std::u16string> going = tellRows(run, wire);
        if (run.remove) {
            removeByProgram(*run.remove, transcript);
            removeLeftBehind(std::move(going));
        }
        return false;
    };
    try {
        runProgram();
    } catch (const ScriptError& error) {
        result.failure = utf8FromAnsi(error.text);
    } catch (const ProcessEnded&) {
        result.failure = "the program ended itself";
    }
    if (run.remove) addRemoved(result);
    for (const auto& hive : run.hives) {
        addWarnings(result, *hive);
        result.removed.push_back(machine.registry.tree().removedFrom(*hive));
    }
    return result;
}

ScanResult failed(const std::string& why) {
    ScanResult result;
    result.failure = why;
    return result;
}

}  // namespace

ScanResult runScan(const ScanRun& run) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return failed(std::strerror(errno));
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child < 0) return failed(std::strerror(errno));
    if (child == 0) {
        ::close(ends[0]);
        WireWriter wire(ends[1]);
        writeRest(wire, scanHere(run, wire));
        wire.flush();
        ::_exit(0);
    }
    ::close(ends[1]);
    ScanResult result;
    try {
        WireReader wire(ends[0]);
        result = readResult(wire);
    } catch (const std::out_of_range& cut) {
        result = failed(cut.what());
    }
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGBUS)
        return failed("a hive became shorter, or could not be read, in the middle of the scan");
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return failed("the scan was ended from outside");
    return result;
}

}  // namespace bromvale::offline
