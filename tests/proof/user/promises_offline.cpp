// What must hold on the machine of a random user, whatever was done.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "core/settings.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/proof/oracle/emptying.h"
#include "tests/proof/oracle/scan.h"
#include "tests/proof/user/ground.h"

namespace bromvale::proof {
namespace {

namespace fs = std::filesystem;
using offline::EventKind;
using offline::machine;

constexpr const char* kOwnFolder = "/Programme/Bromvale/";
constexpr const char* kList = "/Programme/Bromvale/liste.txt";
constexpr View kSettings = u"hkey_current_user\\software\\bromvale";

std::string bytesOfFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Without what the program keeps for itself: its settings and its place in Windows' start.
RegistrySnapshot ofOthers(RegistrySnapshot registry) {
    std::erase_if(registry, [](const auto& key) {
        return key.first == kSettings || key.first.starts_with(Text(kSettings) + u"\\");
    });
    for (auto& [path, key] : registry) {
        if (path.ends_with(u"\\currentversion\\run")) key.values.erase(u"bromvale");
    }
    return registry;
}

// The program writes its log, the list and the undo files, and those the user may delete.
bool isOwn(const std::string& path) {
    const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
    return path == kList || path == std::string(kOwnFolder) + "bromvale.log" ||
           (path.starts_with(std::string(kOwnFolder) + "Backup/") && name.ends_with(".reg"));
}

}  // namespace

std::vector<std::string> UserGround::wrongs() {
    wrongs_.clear();
    registryWrongs();
    driveWrongs();
    settingsWrongs();
    listWrongs();
    putBack();
    return wrongs_;
}

// What the user had entered may have gone and come several times: putting back tells whether it is whole.
void UserGround::registryWrongs() {
    RegistrySnapshot before = ofOthers(registry_);
    RegistrySnapshot after = ofOthers(readRegistry());
    for (const Text& path : enteredKeys_) {
        before.erase(path);
        after.erase(path);
    }
    RegistrySnapshot gone;
    RegistrySnapshot rest;
    for (const auto& [path, key] : before) (after.contains(path) ? rest : gone).emplace(path, key);
    for (const std::string& line : differences(rest, after)) wrong("the registry was changed: " + line);
    keysGone_ = static_cast<int>(gone.size());
    copyWrongs(gone);
}

void UserGround::copyWrongs(const RegistrySnapshot& gone) {
    RegistrySnapshot copies;
    // A file makes a key of which it holds only what lies below; another one has it whole.
    const auto add = [&](const std::string& bytes) {
        for (auto& [path, key] : readRegistryFile(bytes, wrongs_)) {
            StoredKey& copy = copies[path];
            copy.path = key.path;
            copy.values.merge(key.values);
        }
    };
    for (const std::string& bytes : deletedCopies_) add(bytes);
    for (const auto& [path, bytes] : copies_) {
        add(bytes);
        if (bytesOfFile(fileName(path)) != bytes)
            wrong("a complete copy isn't what was written: " + readable(path));
    }
    for (const auto& [path, key] : gone) {
        const auto copy = copies.find(path);
        if (copy == copies.end()) {
            wrong("gone without a copy: " + readable(key.path));
            continue;
        }
        for (const std::string& line : differences({{path, key}}, {*copy}))
            wrong("gone without its whole copy: " + line);
    }
}

// The host's name of a file of the program's folder.
std::string UserGround::fileName(std::string_view path) const {
    std::string name = offline::utf8FromAnsi(path.substr(2));
    std::ranges::replace(name, '\\', '/');
    return stage_.hostDrive() + name;
}

void UserGround::driveWrongs() {
    const DriveSnapshot after = readDrive(stage_.hostDrive());
    std::vector<Text> listed = model_.plan.list;
    listed.insert(listed.end(), model_.plan.chosen.begin(), model_.plan.chosen.end());
    const std::set<std::string> folders = emptied(model_, listed).folders;
    const auto mayGo = [&](const std::string& path) {
        return isOwn(path) || std::ranges::any_of(folders, [&](const std::string& folder) {
                   return path.starts_with(folder + "/");
               });
    };
    for (const auto& [path, content] : drive_) {
        const auto found = after.find(path);
        if (found == after.end()) {
            ++filesGone_;
            if (!mayGo(path)) wrong("gone from outside of the listed folders: " + readable(path));
        } else if (found->second != content && !isOwn(path)) {
            wrong("changed: " + readable(path));
        }
    }
    for (const auto& [path, content] : after) {
        const bool folder = path == std::string(kOwnFolder) + "Backup";
        if (!drive_.contains(path) && !isOwn(path) && !folder) wrong("new: " + readable(path));
    }
}

// All values that were there still are, as texts of one line; what the repair writes has no NUL behind it.
void UserGround::settingsWrongs() {
    const RegistrySnapshot now = readRegistry();
    const auto key = now.find(Text(kSettings));
    if (key == now.end()) return wrong("the settings are gone");
    for (const auto& [name, value] : key->second.values) {
        const Text text = textOf(value.bytes);
        const std::size_t end = text.find(u'\0');
        const bool whole = value.bytes.size() % 2 == 0 && (end == Text::npos || end + 1 == text.size());
        if (value.type != kText || !whole || text.find_first_of(u"\r\n") != Text::npos)
            wrong("a setting can't be read: " + readable(value.name) + " " + readable(text));
    }
    const auto before = registry_.find(Text(kSettings));
    if (before == registry_.end()) return;
    for (const auto& [name, value] : before->second.values) {
        if (!key->second.values.contains(name)) wrong("a setting is gone: " + readable(value.name));
    }
}

// Lines that stood there or that were chosen, and nothing between them.
void UserGround::listWrongs() {
    std::set<std::string> known{""};
    for (const std::vector<Text>* lines : {&model_.plan.list, &model_.plan.chosen}) {
        for (const Text& line : *lines) known.insert(ansi(model_.system, line));
    }
    if (!fs::exists(stage_.hostDrive() + kList)) return wrong("the list of folders is gone");
    const std::string bytes = bytesOfFile(stage_.hostDrive() + kList);
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find("\r\n", at), bytes.size());
        const std::string line = bytes.substr(at, end - at);
        if (!known.contains(line)) wrong("a line of the list: " + readable(line));
        at = end + 2;
    }
}

void UserGround::putBack() {
    for (const auto& [path, bytes] : copies_) {
        offline::Registry empty(machine().otherHalf);
        if (const auto error = offline::loadRegText(bytes, "copy", empty))
            wrong("a copy can't be read: line " + std::to_string(error->line) + " " +
                  readable(error->reason));
    }
    for (const std::string& bytes : entered_) offline::mergeRegText(bytes, machine().registry);
    for (const std::string& line : differences(ofOthers(registry_), ofOthers(readRegistry())))
        wrong("put back: " + line);
}

}  // namespace bromvale::proof
