#include "starter/journal.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "starter/texts.h"

namespace bromvale::starter {
namespace {

constexpr std::u16string_view kId = u"Kennung";
constexpr std::u16string_view kFolder = u"Ordner";
constexpr std::u16string_view kStage = u"Stand";

Place ownPlace(std::u16string_view below = {}) {
    return {Hive::User, View::Bits32, std::u16string(u"Software\\Bromvale-Portable").append(below)};
}

Place addedPlace() {
    return ownPlace(u"\\Klassen");
}

// The name of the value that stands for an added key begins with one of these.
struct Half {
    std::u16string_view word;
    Hive hive;
    View view;
};
constexpr std::array kHalves{
    Half{u"HKLM32\\", Hive::Machine, View::Bits32},
    Half{u"HKLM64\\", Hive::Machine, View::Bits64},
    Half{u"HKCU32\\", Hive::User, View::Bits32},
    Half{u"HKCU64\\", Hive::User, View::Bits64},
};

std::u16string nameOf(const Place& place) {
    for (const Half& half : kHalves) {
        if (half.hive == place.hive && half.view == place.view) return std::u16string(half.word) + place.path;
    }
    return {};
}

std::optional<Place> placeOf(std::u16string_view name) {
    for (const Half& half : kHalves) {
        if (name.starts_with(half.word)) {
            return Place{half.hive, half.view, std::u16string(name.substr(half.word.size()))};
        }
    }
    return std::nullopt;
}

Stage stageOf(const Key& key) {
    const std::u16string text = textOf(key, kStage).value_or(u"");
    const bool isKnown = text.size() == 1 && text[0] >= u'1' && text[0] <= u'5';
    return isKnown ? static_cast<Stage>(text[0] - u'0') : Stage::Begun;
}

bool removeIfThere(Machine& machine, const Place& place) {
    const Found found = machine.readKey(place).found;
    return found == Found::No || (found == Found::Yes && machine.removeKey(place));
}

}  // namespace

Journal readJournal(Machine& machine) {
    const Key key = machine.readKey(ownPlace());
    const Key added = machine.readKey(addedPlace());
    Journal journal;
    journal.found = added.found == Found::Unknown ? Found::Unknown : key.found;
    journal.id = textOf(key, kId).value_or(u"");
    journal.stage = stageOf(key);
    for (const Value& value : added.values) {
        const std::optional<Place> place = placeOf(value.name);
        const std::optional<std::u16string> name = textOf(added, value.name);
        if (place && name) journal.added.push_back({*place, *name});
    }
    return journal;
}

bool beginJournal(Machine& machine, const std::u16string& id) {
    const auto note = [&](std::u16string_view name, std::u16string_view text) {
        return machine.setValue(ownPlace(), textValue(std::u16string(name), text));
    };
    return machine.createKey(ownPlace()) != Created::Refused && noteStage(machine, Stage::Begun) &&
           removeAside(machine) && note(kFolder, machine.folder()) && note(kId, id);
}

bool noteStage(Machine& machine, Stage stage) {
    const auto digit = static_cast<char16_t>(u'0' + static_cast<int>(stage));
    const bool done = machine.setValue(ownPlace(), textValue(std::u16string(kStage), {&digit, 1}));
    machine.flush();
    return done;
}

bool noteAdded(Machine& machine, const Added& added) {
    return machine.createKey(addedPlace()) != Created::Refused &&
           machine.setValue(addedPlace(), textValue(nameOf(added.place), added.name));
}

bool forgetAdded(Machine& machine, const Added& added) {
    return machine.removeValue(addedPlace(), nameOf(added.place));
}

Place asidePlace() {
    return ownPlace(u"\\Einstellungen");
}

bool removeAside(Machine& machine) {
    return removeIfThere(machine, asidePlace());
}

bool removeJournal(Machine& machine) {
    const Key added = machine.readKey(addedPlace());
    if (added.found == Found::Unknown) return false;
    if (!added.values.empty()) return true;
    const bool done = removeIfThere(machine, addedPlace()) && removeIfThere(machine, ownPlace());
    machine.flush();
    return done;
}

}  // namespace bromvale::starter
