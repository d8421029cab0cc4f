// The machine of the scripts, and what must hold behind each of them.
#include <algorithm>

#include "base/failure.h"
#include "platform/events.h"
#include "platform/offline/machine.h"
#include "tests/proof/faults/scripts.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

using offline::machine;

constexpr View kBackupFolder = u"C:\\Programme\\Bromvale\\Backup\\";

Model smallMachine() {
    Model model;
    for (const View file : {u"x\\da.dll", u"x\\weg da.exe", u"Leeren\\a.txt", u"Leeren\\Zdjęcie.txt",
                            u"Leeren\\voll\\b.txt", u"Draußen\\bleibt.txt"})
        model.drive.make(file, EntryKind::File);
    model.drive.make(u"Leeren\\leer", EntryKind::Folder);
    model.drive.make(u"Leeren\\Daten", EntryKind::Folder);
    model.drive.make(u"Programme\\Bromvale\\Backup", EntryKind::Folder);
    Key& classes = model.machine.make(u"Software\\Classes\\CLSID");
    classes.make(u"{A}\\InprocServer32").setText(u"", u"C:\\x\\weg.dll");
    classes.make(u"{A}\\InprocServer32").set(u"Zahl", kNumber, std::string("\7\0\0\0", 4));
    classes.make(u"{B}\\InprocServer32").setText(u"", u"C:\\x\\da.dll");
    classes.make(u"{C}");
    Key& current = model.machine.make(u"Software\\Microsoft\\Windows\\CurrentVersion");
    current.make(u"App Paths\\lap.exe").setText(u"", u"C:\\x\\fort.exe");
    current.make(u"App Paths\\łap.exe").setText(u"", u"C:\\x\\łap.exe");
    current.make(u"Uninstall\\Alt").setText(u"DisplayName", u"Żółw");
    current.make(u"Uninstall\\Alter").setText(u"DisplayName", u"Żółw");
    current.make(u"Uninstall\\Da").setText(u"DisplayName", u"Da");
    current.make(u"Uninstall\\Da").setText(u"UninstallString", u"\"C:\\x\\weg da.exe\" /still");
    current.make(u"Uninstall\\Fort").setText(u"DisplayName", u"Fort");
    current.make(u"Uninstall\\Fort").setText(u"UninstallString", u"C:\\x\\fort.exe");
    model.user.make(u"Software");
    return model;
}

bool isOwn(const std::string& path) {
    return path == "\\Programme\\Bromvale\\bromvale.log";
}

// The bytes of all files in the backup folder whose names begin so.
std::string backups(std::string_view start) {
    std::string bytes;
    for (const auto& [path, content] : readMemoryDrive()) {
        const std::string folder = utf8(kBackupFolder.substr(2));
        if (path.starts_with(folder + std::string(start))) bytes += content;
    }
    return bytes;
}

void complainAbout(const RegistrySnapshot& gone, bool needsRecord, std::vector<std::string>& wrongs) {
    const std::string records = backups("R\xC3\xBC");
    RegistrySnapshot copies;
    // A copy that broke off in the middle is no fault: what counts is what it holds.
    std::vector<std::string> complaints;
    for (const auto& [path, content] : readMemoryDrive()) {
        if (path.find("\\Vollst") != std::string::npos) copies.merge(readRegistryFile(content, complaints));
    }
    for (const auto& [path, key] : gone) {
        const std::string line = "[" + std::string(key.path.begin(), key.path.end()) + "]\r\n";
        if (needsRecord && records.find(line) == std::string::npos)
            wrongs.push_back("gone without its record: " + readable(key.path));
        const auto copy = copies.find(path);
        if (copy == copies.end() || !differences({{path, key}}, {*copy}).empty())
            wrongs.push_back("gone without its whole copy: " + readable(key.path));
    }
}

}  // namespace

Ground::Ground() : model_(smallMachine()), stage_(std::make_unique<Stage>(model_)) {
    setUnhandledFailure([](const bromvale::Failure&) {});
    static_cast<void>(frmMain());
}

Ground::Handles Ground::handles() {
    return {machine().registry.openHandles(), offline::machine().searches.count(),
            offline::machine().openFiles(), offline::machine().internetHandles};
}

void Ground::remember() {
    machine().events.clear();
    registry_ = readRegistry();
    drive_ = readMemoryDrive();
    handles_ = handles();
}

std::vector<std::string> Ground::wrongs(const Script& script) const {
    std::vector<std::string> wrongs;
    registryWrongs(script, wrongs);
    driveWrongs(script, wrongs);
    for (const offline::Event& event : machine().events.all()) {
        if (event.kind != offline::EventKind::Run && event.kind != offline::EventKind::ShellExecute) continue;
        const bool named =
            std::any_of(script.starts.begin(), script.starts.end(), [&](const std::string& start) {
                return event.text == start || start.find(event.text) != std::string::npos;
            });
        if (!named || event.text.empty()) wrongs.push_back("started: " + readable(event.text));
    }
    return wrongs;
}

void Ground::registryWrongs(const Script& script, std::vector<std::string>& wrongs) const {
    const RegistrySnapshot now = readRegistry();
    RegistrySnapshot gone;
    RegistrySnapshot rest;
    for (const auto& [path, key] : registry_)
        (now.contains(path) || !script.removesKeys ? rest : gone).insert({path, key});
    RegistrySnapshot compared = now;
    if (!script.writesKey.empty()) {
        const Text written = lower(View(fromUtf8(script.writesKey)));
        rest.erase(written);
        compared.erase(written);
    }
    for (const std::string& line : differences(rest, compared)) wrongs.push_back("registry: " + line);
    complainAbout(gone, script.needsRecord, wrongs);
}

void Ground::driveWrongs(const Script& script, std::vector<std::string>& wrongs) const {
    const DriveSnapshot now = readMemoryDrive();
    Text allowed;
    for (const char byte : script.writes) allowed += static_cast<char16_t>(static_cast<unsigned char>(byte));
    const std::string place = script.writes.empty() ? "\x01" : utf8(View(allowed).substr(2));
    for (const auto& [path, content] : drive_) {
        if (path.starts_with(place) || isOwn(path)) continue;
        const auto found = now.find(path);
        if (found == now.end()) {
            wrongs.push_back("gone: " + readable(path));
        } else if (found->second != content) {
            wrongs.push_back("changed: " + readable(path));
        }
    }
    for (const auto& [path, content] : now) {
        if (!drive_.contains(path) && !path.starts_with(place) && !isOwn(path))
            wrongs.push_back("new: " + readable(path));
    }
}

}  // namespace bromvale::proof
