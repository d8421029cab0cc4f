#include "bromvale-offline/rescue/scan_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <span>

#include "bromvale-offline/rescue/machine_plan.h"
#include "bromvale-offline/rescue/wire.h"
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

std::vector<ResultRow> rowsOf(const ListView& list) {
    std::vector<ResultRow> rows;
    for (int i = 1; i <= list.count(); ++i) {
        const ListItem& item = list.item(i);
        rows.push_back({item.column(kKeyLine), item.column(kValueName), item.column(kValueData), 0});
    }
    return rows;
}

// Over the one before.
void drawProgress() {
    if (const Control* const percent = findControl("lblScanProzent"))
        std::fprintf(stderr, "\rscanning %-8s", utf8FromAnsi(percent->caption()).c_str());
    machine().pump.at(kProgressEvery, drawProgress);
}

// The rows know their place in a hive only here, where the machine stands.
void findPlaces(std::vector<FoundRow>& rows, std::span<const std::shared_ptr<MountedHive>> hives) {
    const Registry& registry = machine().registry;
    for (FoundRow& row : rows) {
        const KeyOrigin origin = registry.tree().originOf(registry.seenAt(row.key));
        const auto found =
            std::ranges::find_if(hives, [&](const auto& hive) { return hive.get() == origin.source; });
        row.hive = static_cast<std::uint32_t>(found - hives.begin());
        row.place = origin.place;
    }
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
void removeLeftBehind(std::vector<FoundRow> rows) {
    std::ranges::sort(rows, std::greater(), [](const FoundRow& row) { return row.key.size(); });
    Registry& registry = machine().registry;
    for (const FoundRow& row : rows) {
        RegistryKey* const key = registry.seenAt(row.key);
        if (key != nullptr && !registry.isRoot(key) && key->subKeyCount() == 0) registry.tree().remove(key);
    }
}

void removeRows(const ScanResult& result, const std::vector<std::size_t>& places, Transcript& transcript) {
    removeByProgram(places, transcript);
    std::vector<FoundRow> chosen;
    for (const std::size_t place : places) chosen.push_back(result.rows[place]);
    removeLeftBehind(std::move(chosen));
}

void writeResult(WireWriter& wire, const ScanResult& result) {
    wire.text(result.report);
    wire.number(result.rows.size());
    for (const FoundRow& row : result.rows) {
        wire.text(row.key);
        wire.text(row.valueName);
        wire.text(row.data);
        wire.number(static_cast<std::uint64_t>(row.kind));
        wire.text(row.sought);
        wire.number(row.hive);
        wire.number(row.place);
    }
    wire.number(result.elsewhere);
    wire.number(result.warnings.size());
    for (const std::string& warning : result.warnings) wire.text(warning);
    wire.number(result.removed.size());
    for (const auto& cells : result.removed) {
        wire.number(cells.size());
        for (const Cell cell : cells) wire.number(cell);
    }
    wire.number(result.removedPaths.size());
    for (const std::u16string& path : result.removedPaths) wire.text(path);
    wire.text(result.completeCopy);
    wire.text(result.failure);
}

ScanResult readResult(WireReader wire) {
    ScanResult result;
    result.report = wire.text();
    for (std::uint64_t left = wire.number(); left > 0; --left) {
        FoundRow row;
        row.key = wire.wide();
        row.valueName = wire.wide();
        row.data = wire.wide();
        row.kind = static_cast<FaultKind>(wire.number());
        row.sought = wire.wide();
        row.hive = static_cast<std::uint32_t>(wire.number());
        row.place = static_cast<std::uint32_t>(wire.number());
        result.rows.push_back(std::move(row));
    }
    result.elsewhere = wire.number();
    for (std::uint64_t left = wire.number(); left > 0; --left) result.warnings.push_back(wire.text());
    for (std::uint64_t left = wire.number(); left > 0; --left) {
        auto& cells = result.removed.emplace_back();
        for (std::uint64_t more = wire.number(); more > 0; --more)
            cells.push_back(static_cast<Cell>(wire.number()));
    }
    for (std::uint64_t left = wire.number(); left > 0; --left) result.removedPaths.push_back(wire.wide());
    result.completeCopy = wire.text();
    result.failure = wire.text();
    return result;
}

void addWarnings(ScanResult& result, const MountedHive& hive) {
    for (const std::string& damage : hive.damages()) result.warnings.push_back("damaged: " + damage);
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

ScanResult scanHere(const ScanRun& run) {
    ScanResult result;
    run.setUp();
    Machine& machine = offline::machine();
    Transcript transcript;
    machine.pump.nextAction = [&] {
        startsScan();
        if (run.showProgress) machine.pump.at(kProgressEvery, drawProgress);
        doAction("click", "cmdStart", transcript);
        if (run.showProgress) std::fprintf(stderr, "\r%20s\r", "");
        result.report = utf8FromAnsi(findControl("lblScanBericht")->caption());
        result.rows = explained(rowsOf(rowsOfList()));
        result.elsewhere = machine.drives.soughtElsewhere;
        findPlaces(result.rows, run.hives);
        if (run.remove) removeRows(result, *run.remove, transcript);
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

[[noreturn]] void tell(int pipe, const std::string& bytes) {
    std::string_view rest = bytes;
    while (!rest.empty()) {
        const ssize_t written = ::write(pipe, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) ::_exit(1);
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    ::_exit(0);
}

std::string allOf(int pipe) {
    std::string bytes;
    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t count = ::read(pipe, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return bytes;
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
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
        WireWriter wire;
        writeResult(wire, scanHere(run));
        tell(ends[1], wire.bytes());
    }
    ::close(ends[1]);
    const std::string bytes = allOf(ends[0]);
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGBUS)
        return failed("a hive became shorter, or could not be read, in the middle of the scan");
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return failed("the scan was ended from outside");
    try {
        return readResult(WireReader(bytes));
    } catch (const std::out_of_range& cut) {
        return failed(cut.what());
    }
}

}  // namespace bromvale::offline
