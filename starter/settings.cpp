#include "starter/settings.h"

#include <algorithm>
#include <string_view>

#include "base/registry_file_text.h"
#include "starter/journal.h"
#include "starter/registry_text.h"
#include "starter/texts.h"

namespace bromvale::starter {
namespace {

constexpr std::string_view kFile = "Einstellungen.reg";
constexpr std::string_view kNewFile = "Einstellungen.neu";
constexpr std::string_view kEditorPath = "HKEY_CURRENT_USER\\Software\\Bromvale";

Place settingsPlace() {
    return {Hive::User, View::Bits32, u"Software\\Bromvale"};
}

std::string faultText(std::string_view file, std::size_t line, std::string_view reason) {
    return std::string(file) + ", Zeile " + std::to_string(line) + ": " + std::string(reason) + ".";
}

FolderSettings settingsOf(Machine& machine, const RegistryText& text) {
    if (text.fault) return {{}, faultText(kFile, text.fault->line, text.fault->reason)};
    FolderSettings settings;
    for (const TextKey& key : text.keys) {
        if (!isSameName(key.path, kEditorPath)) {
            return {{}, std::string(kFile) + ": Der Schlüssel " + key.path + " gehört nicht hinein."};
        }
        for (const auto& [name, data] : key.values) {
            settings.values.push_back(
                {machine.fromCodePage(name), kTextType, toUtf16Bytes(machine.fromCodePage(data))});
        }
    }
    return settings;
}

// Where the new file can't take the old one's place in one step, a start that was killed in between leaves
// the new one alone. Without its last line it is one that was never whole, and the first that was ever
// written.
File fileOfFolder(Machine& machine) {
    File file = machine.readFile(kFile);
    if (file.found != Found::No) return file;
    file = machine.readFile(kNewFile);
    if (file.found != Found::Yes || readRegistryText(file.bytes).hasEndMark) return file;
    return {};
}

// Reading takes the first line that is wrong for the whole: what it would refuse must never get into the
// file.
bool isReadAgain(Machine& machine, const Value& value, const std::string& name, std::string_view line) {
    if (machine.fromCodePage(name) != value.name) return false;  // it might be another value's name
    const RegistryText text =
        readRegistryText(std::string("REGEDIT4\n[").append(kEditorPath).append("]\n").append(line));
    return !text.fault && text.keys[0].values.size() == 1;
}

std::string fileText(Machine& machine, const std::vector<Value>& values) {
    using Text = RegistryFileText<char>;
    Text text;
    text.bytes() = Text::header();
    text.key(kEditorPath);
    const std::string end = std::string("\r\n").append(kEndMark).append("\r\n");
    std::size_t count = 0;
    for (const Value& value : values) {
        const std::string name = machine.toCodePage(value.name);
        if (value.type != kTextType || !text.holdsName(name)) continue;
        Text line;
        line.value(name, value.type, machine.toCodePage(fromUtf16Bytes(value.data)));
        if (text.bytes().size() + line.bytes().size() + end.size() > kLargestFile) continue;
        if (count == kMostValues || !isReadAgain(machine, value, name, line.bytes())) continue;
        text.bytes() += line.bytes();
        ++count;
    }
    text.bytes() += end;
    return text.bytes();
}

bool isSame(std::vector<Value> one, std::vector<Value> other) {
    std::ranges::sort(one, {}, &Value::name);
    std::ranges::sort(other, {}, &Value::name);
    return one == other;
}

// Makes the key where it is missing. Values come in their order, which the registry editor shows.
bool replaceValues(Machine& machine, const Place& place, const std::vector<Value>& values) {
    const Key key = machine.readKey(place);
    if (key.found == Found::Unknown) return false;
    if (key.found == Found::No && machine.createKey(place) == Created::Refused) return false;
    if (key.values == values) return true;
    return std::ranges::all_of(key.values,
                               [&](const Value& old) { return machine.removeValue(place, old.name); }) &&
           std::ranges::all_of(values, [&](const Value& each) { return machine.setValue(place, each); });
}

// Something below that is not ours keeps the key.
bool removeSettings(Machine& machine) {
    const Key key = machine.readKey(settingsPlace());
    if (key.found != Found::Yes) return key.found == Found::No;
    return key.hasSubKeys ? replaceValues(machine, settingsPlace(), {}) : machine.removeKey(settingsPlace());
}

}  // namespace

FolderSettings readFolderSettings(Machine& machine) {
    const File file = fileOfFolder(machine);
    if (file.found == Found::No) return {};
    if (file.found == Found::Unknown) return {{}, std::string(kFile) + " kann nicht gelesen werden."};
    return settingsOf(machine, readRegistryText(file.bytes));
}

bool saveFolderSettings(Machine& machine) {
    const Key key = machine.readKey(settingsPlace());
    if (key.found == Found::Unknown) return false;
    if (key.values.empty()) return true;
    const std::string text = fileText(machine, key.values);
    const File old = machine.readFile(kFile);
    if (old.found == Found::Yes && old.bytes == text) return true;
    return machine.writeFile(kNewFile, text) && machine.replaceFile(kNewFile, kFile);
}

bool setSettingsAside(Machine& machine) {
    const Key own = machine.readKey(settingsPlace());
    if (own.found != Found::Yes) return own.found == Found::No;
    if (!replaceValues(machine, asidePlace(), own.values)) return false;
    return isSame(machine.readKey(asidePlace()).values, own.values);
}

bool putSettingsIn(Machine& machine, const std::vector<Value>& values) {
    // A key that is there stays: a new one would have other rights.
    if (values.empty() && machine.readKey(settingsPlace()).found == Found::No) return true;
    return replaceValues(machine, settingsPlace(), values);
}

bool restoreSettings(Machine& machine) {
    const Key aside = machine.readKey(asidePlace());
    if (aside.found == Found::Unknown) return false;
    return aside.found == Found::Yes ? replaceValues(machine, settingsPlace(), aside.values)
                                     : removeSettings(machine);
}

}  // namespace bromvale::starter
