#include "tests/proof/machine/model.h"

#include <algorithm>

namespace bromvale::proof {
namespace {

constexpr std::size_t kMostShown = 160;

template <class Things>
auto* named(Things& things, View name) {
    const auto found = std::find_if(things.begin(), things.end(),
                                    [name](const auto& thing) { return equalNoCase(thing.name, name); });
    return found == things.end() ? nullptr : &*found;
}

void describe(const Key& key, const std::string& path, std::string& text) {
    const std::string own = path + "\\" + readable(key.name);
    text += "  [" + own + "]" + (key.denied ? "  (denied)" : "") + "\n";
    for (const Value& value : key.values) {
        text += "    \"" + readable(value.name) + "\" type " + std::to_string(value.type) + ", " +
                std::to_string(value.bytes.size()) + " bytes: ";
        const bool isText = value.type == kText || value.type == kExpandText || value.type == kMultiText;
        std::string data = isText ? readable(textOf(value.bytes)) : readable(std::string_view(value.bytes));
        if (data.size() > kMostShown) data.replace(kMostShown / 2, data.size() - kMostShown, " ... ");
        text += data + "\n";
    }
    for (const Key& below : key.keys) describe(below, own, text);
}

void describe(const Entry& entry, const std::string& path, std::string& text) {
    const std::string own = path.empty() ? readable(entry.name) : path + "\\" + readable(entry.name);
    if (entry.kind != EntryKind::Folder) text += "  " + own;
    if (entry.kind == EntryKind::Folder && entry.entries.empty()) text += "  " + own + "\\";
    if (entry.kind == EntryKind::LinkToFolder) text += " -> " + readable(entry.target);
    if (entry.kind == EntryKind::DanglingLink) text += " -> nowhere";
    if (entry.kind != EntryKind::Folder || entry.entries.empty()) text += "\n";
    for (const Entry& below : entry.entries) describe(below, own, text);
}

}  // namespace

std::vector<Text> split(View path) {
    std::vector<Text> names;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(u'\\'), path.size());
        if (end > 0) names.emplace_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return names;
}

const Key* Key::find(View path) const {
    const Key* key = this;
    for (const Text& name_ : split(path)) {
        key = named(key->keys, name_);
        if (key == nullptr) return nullptr;
    }
    return key;
}

Key& Key::make(View path) {
    Key* key = this;
    for (const Text& part : split(path)) {
        Key* next = named(key->keys, part);
        if (next == nullptr) {
            const auto place = std::find_if(key->keys.begin(), key->keys.end(),
                                            [&](const Key& other) { return comesBefore(part, other.name); });
            next = &*key->keys.insert(place, Key{part, {}, {}, false});
        }
        key = next;
    }
    return *key;
}

void Key::set(View valueName, std::uint32_t type, std::string bytes) {
    if (Value* value = named(values, valueName)) {
        value->type = type;
        value->bytes = std::move(bytes);
        return;
    }
    values.push_back({Text(valueName), type, std::move(bytes)});
}

void Key::setText(View valueName, View text) {
    set(valueName, kText, bytesOf(Text(text) + u'\0'));
}

const Entry* Entry::find(View path) const {
    const Entry* entry = this;
    for (const Text& part : split(path)) {
        entry = named(entry->entries, part);
        if (entry == nullptr) return nullptr;
    }
    return entry;
}

Entry& Entry::make(View path, EntryKind last) {
    Entry* entry = this;
    const std::vector<Text> names = split(path);
    for (std::size_t i = 0; i < names.size(); ++i) {
        Entry* next = named(entry->entries, names[i]);
        if (next == nullptr) {
            entry->entries.push_back({names[i], i + 1 == names.size() ? last : EntryKind::Folder, {}, {}});
            next = &entry->entries.back();
        }
        entry = next;
    }
    return *entry;
}

std::string describe(const Model& model) {
    const System& system = model.system;
    std::string text =
        "seed " + std::to_string(model.seed) + ": " + system.os + (system.sixtyFour ? " 64-bit" : "") +
        (system.sixtyFour ? (system.programSixtyFour ? ", 64-bit program" : ", 32-bit program") : "") +
        ", code page " + std::to_string(system.codePage) +
        (system.shortNames ? ", short names" : ", no short names") +
        (model.plan.permanent ? ", for good" : ", recycle bin") +
        (model.plan.markedOnly ? ", marked rows" : ", all rows") + "\n";
    for (const Text& line : model.plan.list) text += "  listed: " + readable(line) + "\n";
    for (const Text& line : model.plan.chosen) text += "  chosen: " + readable(line) + "\n";
    for (const Key& key : model.machine.keys) describe(key, "HKLM", text);
    for (const Key& key : model.user.keys) describe(key, "HKCU", text);
    describe(model.drive, "", text);
    return text;
}

}  // namespace bromvale::proof
