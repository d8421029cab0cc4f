#include "tests/proof/user/ground.h"

#include <fstream>
#include <utility>

#include "core/state.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/proof/machine/random.h"
#include "tests/proof/oracle/scan.h"

namespace bromvale::proof {
namespace {

using offline::EventKind;
using offline::machine;

// Numbers that have nothing to do with those of another seed or purpose: plain seeds that are neighbours give
// the same ones, a step apart.
std::uint64_t seedFor(std::uint64_t seed, std::uint64_t purpose) {
    return Random(Random(seed).next() ^ purpose).next();
}

System chooseSystem(Random& random) {
    System system;
    const int kind = random.below(100);
    if (kind < 10) {
        system.os = "Windows 98";
        system.family = Family::Nine;
    } else if (kind < 20) {
        system.os = "Windows NT4";
        system.family = Family::Nt4;
    } else if (kind < 40) {
        system.sixtyFour = true;
        system.programSixtyFour = random.percent(50);
    }
    if (random.percent(15)) system.codePage = 1250;
    system.shortNames = system.family == Family::Nine || random.percent(50);
    return system;
}

void addUndoFiles(Model& model, Random& random) {
    constexpr View kNames[] = {u"Rückgängig_01012026_000000.reg", u"Vollständig_01012026_000000.reg",
                               u"alt.reg", u"fremd.txt", u"Zdjęcia.reg"};
    for (const View name : kNames) {
        if (!random.percent(50) || (model.system.family == Family::Nine && name == kNames[4])) continue;
        model.drive.make(u"Programme\\Bromvale\\Backup\\" + Text(name), EntryKind::File);
    }
}

Model machineOf(std::uint64_t seed) {
    Random random(seedFor(seed, 1));
    Model model = generate(seedFor(seed, 2), chooseSystem(random));
    addUndoFiles(model, random);
    model.plan.list.emplace_back(u"Q:\\Laufwerk fehlt");
    return model;
}

constexpr const char* kList = "/Programme/Bromvale/liste.txt";

}  // namespace

UserGround::UserGround(std::uint64_t seed, std::string hostFolder)
    : model_(machineOf(seed)), stage_(model_, hostFolder), hostFolder_(std::move(hostFolder)) {
    WebHost = "127.0.0.1:9";  // nobody listens there
    putUpSettings();
    putUpList();
    follow();
    registry_ = readRegistry();
    drive_ = readDrive(stage_.hostDrive());
}

UserGround::~UserGround() {
    machine().events.sink = nullptr;
}

// Switches as a user may have left them, and what a hand or another program may have put there.
void UserGround::putUpSettings() {
    Random random(seedFor(model_.seed, 3));
    constexpr std::string_view kKey = "HKEY_CURRENT_USER\\Software\\Bromvale";
    offline::Registry& registry = machine().registry;
    SettingsRead = false;  // nothing has been yet
    if (random.percent(5)) registry.deleteKey(kKey);
    constexpr std::pair<const char*, int> kSwitches[] = {{"1stRun", 10},
                                                         {"AutoClose", 6},
                                                         {"AutoEntfernen", 15},
                                                         {"AutoFileDelAfterReentry", 25},
                                                         {"AutoRegFileDel", 20},
                                                         {"AutoScan", 12},
                                                         {"DelFilePermanent", 40},
                                                         {"Protokoll", 15},
                                                         {"Proxy", 15},
                                                         {"RebootAfterDelete", 4},
                                                         {"RebootAfterEntry", 15},
                                                         {"ScreenSave", 50}};
    for (const auto& [name, chance] : kSwitches) {
        if (random.percent(chance)) registry.setText(kKey, name, "1");
    }
    if (random.percent(30)) registry.setText(kKey, "ProxyAdresse", "127.0.0.1");
    constexpr const char* kOddNumbers[] = {"", "abc", "40000", "-1", "0", "32767", "7,5"};
    for (const char* name :
         {"Form_Height", "Form_Width", "ScreenX", "ScreenY", "DelAfterDays", "ProxyPort"}) {
        if (random.percent(10)) registry.setText(kKey, name, random.oneOf(kOddNumbers));
    }
    if (random.percent(90)) stage_.registerComponents();
    if (random.percent(5)) machine().commandLine = "-d";
}

void UserGround::putUpList() {
    std::ofstream list(stage_.hostDrive() + kList, std::ios::binary);
    for (const Text& line : model_.plan.list) list << ansi(model_.system, line) << "\r\n";
}

// The bytes that went into complete copies, as they went: a user may delete the files afterwards.
void UserGround::follow() {
    machine().events.sink = [this](const offline::Event& event) {
        if (event.kind == EventKind::FileWritten && event.text.find("\\Vollst") != std::string::npos)
            copyGrows(event.text, event.caption);
        if (event.kind == EventKind::FileDeleted) fileGoes(event.text);
        if (event.kind == EventKind::ShellExecute && event.caption == "Open") userEnters(event.text);
        const bool stands = event.kind == EventKind::MessageBox || event.kind == EventKind::Browse ||
                            event.kind == EventKind::SaveDialog;
        if (stands && onBox) onBox();
    };
}

// What is added to a file has no head of its own.
void UserGround::copyGrows(const std::string& path, const std::string& bytes) {
    std::string& copy = copies_[path];
    const std::size_t head =
        bytes.find(copy.starts_with("REGEDIT4") || copy.empty() ? "[" : std::string("[\0", 2));
    entered_.push_back(copy.empty() ? bytes : copy.substr(0, copy.find('[')) + bytes.substr(head));
    copy += bytes;
}

void UserGround::fileGoes(const std::string& path) {
    if (auto copy = copies_.extract(path)) deletedCopies_.push_back(std::move(copy.mapped()));
}

// An undo file holds less than the keys that it names: what it leads to is the user's wish, and what stands
// in the registry from then on is what has to come back.
void UserGround::userEnters(const std::string& path) {
    const auto bytes = machine().drives.readFile(offline::wideFromAnsi(path));
    if (!bytes || !path.ends_with(".reg")) return;
    const RegistrySnapshot before = readRegistry();
    offline::mergeRegText(*bytes, machine().registry);
    for (const auto& [name, key] : readRegistry()) {
        const auto was = before.find(name);
        if (was != before.end() && was->second.values == key.values) continue;
        enteredKeys_.insert(name);
        StoredKey& kept = registry_[name];
        if (was == before.end()) kept.path = key.path;
        for (const auto& [valueName, value] : key.values) {
            if (was == before.end() || !was->second.values.contains(valueName) ||
                was->second.values.at(valueName) != value)
                kept.values[valueName] = value;
        }
    }
    entered_.push_back(*bytes);
}

}  // namespace bromvale::proof
