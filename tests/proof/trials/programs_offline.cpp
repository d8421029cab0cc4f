// The programs page: only what an entry names is started, and only an entry whose program is surely missing
// may go.
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/exact/text.h"
#include "platform/offline/machine.h"
#include "tests/proof/trials/trial.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

using offline::EventKind;
using offline::machine;

constexpr const char* kMissing = "Deinstallationsprogramm fehlt";

// What the key of a row says, by its true names.
struct Program {
    std::int32_t hive = 0;
    Text path;
    std::optional<Text> command;
};

Text textIn(const Key& key, View name) {
    for (const Value& value : key.values) {
        if (value.name != name || (value.type != kText && value.type != kExpandText)) continue;
        const Text text = textOf(value.bytes);
        return text.substr(0, text.find(u'\0'));
    }
    return {};
}

void collect(const Model& model, std::int32_t hive, const Text& path, std::vector<Program>& programs) {
    const Key* key = model.hive(hive).find(realKeyPath(model.system, hive, path));
    if (key == nullptr) return;
    programs.push_back({hive, path, textIn(*key, u"UninstallString")});
    for (const Key& below : key->keys) collect(model, hive, path + u"\\" + below.name, programs);
}

Text trimmed(const Text& command) {
    const std::size_t start = command.find_first_not_of(u" \t");
    return start == Text::npos ? Text() : command.substr(start);
}

Text byByte(const std::string& bytes) {
    Text text;
    for (const char byte : bytes) text += static_cast<char16_t>(static_cast<unsigned char>(byte));
    return text;
}

// Variables stand for their folders, and a program of the other half of a 64-bit system is started from
// there: in quotes, with its ending, what follows behind a blank.
Text asStarted(const Text& command) {
    Text line = lower(View(trimmed(command)));
    constexpr std::pair<View, View> kWords[] = {
        {u"%systemroot%", u"c:\\windows"},     {u"%windir%", u"c:\\windows"},
        {u"%programfiles%", u"c:\\programme"}, {u"\"", u""},
        {u"\\syswow64\\", u"\\system32\\"},    {u"\\sysnative\\", u"\\system32\\"}};
    for (const auto& [word, by] : kWords) {
        for (std::size_t at = line.find(word); at != Text::npos; at = line.find(word, at))
            line.replace(at, word.size(), by);
    }
    std::erase(line, u' ');
    constexpr View kSystem = u"c:\\windows\\system32\\";
    if (line.starts_with(kSystem)) line.erase(0, kSystem.size());
    if (const std::size_t ending = line.find(u".exe"); ending != Text::npos) line.erase(ending, 4);
    return line;
}

// Every way in which the system could read the command's program. One without an ending is taken for an .exe.
std::vector<Text> programsIn(const Text& command) {
    std::vector<Text> paths;
    if (command.starts_with(u"\"")) return {command.substr(1, command.find(u'"', 1) - 1)};
    for (std::size_t blank = command.find(u' '); blank != Text::npos; blank = command.find(u' ', blank + 1))
        paths.push_back(command.substr(0, blank));
    paths.push_back(command);
    return paths;
}

bool isSurelyMissing(const Model& model, const Text& command) {
    if (!isExactOn(model.system.codePage, command)) return false;
    for (const Text& path : programsIn(asStarted(command))) {
        if (path.size() > 1 && path[1] == u':' && lower(path[0]) != u'c') return false;  // no such drive
        if (path.starts_with(u"\\\\")) return false;
        const bool ending = path.find(u'.', path.rfind(u'\\') + 1) != Text::npos;
        if (isFile(model, ending ? path : path + u".exe")) return false;
    }
    return true;
}

}  // namespace

void Trial::uninstall() {
    frmMain().programs.mnuPopUpDeinstall_Click();
    for (int number = 1; number <= frmMain().programs.lvwDeinstall.count() && problems_.empty(); ++number)
        uninstallRow(number);
    same("the programs page changed", atStart_, readRegistry());
}

// The rows' texts are plain, so several keys may look like the one of a row.
void Trial::uninstallRow(int number) {
    const ListItem& item = frmMain().programs.lvwDeinstall.item(number);
    const std::string name = item.text();
    const std::string keyOfRow = item.column(kProgramKey);
    const std::int32_t hive = std::stoi(item.column(kProgramHive));
    std::vector<Program> programs;
    collect(model_, hive, u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall", programs);
    // The hidden column keeps the true name.
    const Text key = wideText(keyOfRow);
    std::erase_if(programs, [&](const Program& program) {
        const Text line = program.path + u"]";
        return line.substr(0, line.find(u']') + 1) != key;
    });
    machine().events.clear();
    machine().answers.assign({IDYES, IDYES});
    frmMain().programs.lvwDeinstall.userSelect({number});
    frmMain().programs.cmdDeinstall.userClick();
    machine().answers.clear();
    std::vector<Text> commands;
    for (const Program& program : programs) commands.push_back(trimmed(*program.command));
    checkStarted(readable(name), commands);
    checkOffer(readable(name), commands, realKeyPath(model_.system, hive, key.substr(0, key.size() - 1)));
}

void Trial::checkStarted(const std::string& name, const std::vector<Text>& commands) {
    for (const offline::Event& event : machine().events.all()) {
        if (event.kind != EventKind::Run && event.kind != EventKind::ShellExecute) continue;
        ++counts_.started;
        const bool named = std::any_of(commands.begin(), commands.end(), [&](const Text& command) {
            const Text whole = asStarted(byByte(ansi(model_.system, command)));
            return isExactOn(model_.system.codePage, command) && !whole.empty() &&
                   asStarted(byByte(event.text)) == whole;
        });
        if (named) continue;
        problem("started for " + name + " without being named: " + readable(event.text));
        for (const Text& command : commands) problem("  its command: " + readable(command));
    }
}

void Trial::checkOffer(const std::string& name, const std::vector<Text>& commands, const Text& key) {
    bool offered = false;
    for (const offline::Event& event : machine().events.of(EventKind::MessageBox))
        offered = offered || event.text.find(kMissing) != std::string::npos;
    const bool missing = std::any_of(commands.begin(), commands.end(), [this](const Text& command) {
        return isSurelyMissing(model_, command);
    });
    if (offered && !missing) {
        problem("offered for removal, but not surely missing: " + name);
        for (const Text& command : commands) problem("  its command: " + readable(command));
    }
    if (!offered) return;
    const RegistrySnapshot after = readRegistry();
    RegistrySnapshot gone;
    RegistrySnapshot rest = atStart_;
    for (const auto& [path, stored] : atStart_) {
        if (after.contains(path)) continue;
        gone.emplace(path, stored);
        rest.erase(path);
        const std::size_t below = path.find(lower(View(key)));
        const bool itself = below != Text::npos && below + key.size() == path.size();
        const bool inside = below != Text::npos && model_.system.family == Family::Nine;
        if (!itself && !inside)
            problem("the programs page removed " + readable(stored.path) + " for " + name);
    }
    same("the programs page changed", rest, after);
    checkCopies(gone);
    if (gone.empty()) return;
    atStart_ = after;
    readBack(model_);
}

}  // namespace bromvale::proof
