#include "starter/components.h"

#include <algorithm>
#include <string_view>

#include "starter/registry_text.h"
#include "starter/texts.h"

extern const unsigned char embedded_components_reg[];
extern const unsigned long embedded_components_reg_size;

namespace bromvale::starter {
namespace {

constexpr std::string_view kHive = "HKEY_LOCAL_MACHINE\\";

std::vector<Component> embeddedComponents() {
    const RegistryText text = readRegistryText(
        {reinterpret_cast<const char*>(embedded_components_reg), embedded_components_reg_size});
    std::vector<Component> list;
    for (const TextKey& key : text.keys) {
        if (!key.path.starts_with(kHive) || key.values.size() != 1) continue;
        std::string name = key.values[0].data;
        name.pop_back();
        list.push_back({widened(std::string_view(key.path).substr(kHive.size())), widened(name)});
    }
    return list;
}

bool isMissing(Machine& machine, const Place& place) {
    return machine.readKey(place).found == Found::No;
}

bool isListed(const std::vector<Added>& list, const Place& place) {
    return std::ranges::any_of(list, [&](const Added& added) {
        return added.place.hive == place.hive && added.place.path == place.path;
    });
}

// The keys above that aren't there either, the highest first.
void listMissingParents(Machine& machine, const Place& place, std::vector<Added>& list) {
    for (std::size_t end = place.path.find(u'\\'); end != std::u16string::npos;
         end = place.path.find(u'\\', end + 1)) {
        const Place parent{place.hive, place.view, place.path.substr(0, end)};
        if (!isListed(list, parent) && isMissing(machine, parent)) list.push_back({parent, {}});
    }
}

std::vector<Added> listMissing(Machine& machine, View view) {
    std::vector<Added> list;
    for (const Component& component : components()) {
        Place place{Hive::Machine, view, component.path};
        if (!isMissing(machine, place) || !isMissing(machine, {Hive::User, view, component.path})) continue;
        if (!machine.mayCreate(place)) place.hive = Hive::User;
        listMissingParents(machine, place, list);
        list.push_back({place, component.name});
    }
    return list;
}

void add(Machine& machine, const Added& added) {
    if (machine.createKey(added.place) == Created::New) {
        if (!added.name.empty()) static_cast<void>(machine.setValue(added.place, textValue({}, added.name)));
    } else {
        static_cast<void>(forgetAdded(machine, added));
    }
}

// One of our classes or a key above one: the journal is no order to delete whatever stands in it.
bool mayBeOurs(const Added& added) {
    return std::ranges::any_of(components(), [&](const Component& component) {
        const std::u16string& path = added.place.path;
        return component.path == path ? component.name == added.name
                                      : added.name.empty() && component.path.starts_with(path + u'\\');
    });
}

// A start that was killed between the key and its default value leaves the key without one.
bool isUnchanged(const Key& key, const Added& added) {
    if (key.hasSubKeys) return false;
    if (key.values.empty()) return true;
    return !added.name.empty() && key.values == std::vector<Value>{textValue({}, added.name)};
}

bool takeBack(Machine& machine, const Added& added) {
    const Key key = machine.readKey(added.place);
    if (key.found == Found::Unknown) return false;
    const bool isOurs = key.found == Found::Yes && mayBeOurs(added) && isUnchanged(key, added);
    return (!isOurs || machine.removeKey(added.place)) && forgetAdded(machine, added);
}

// The entry of the list of programs remembers classes under their own numbers, with their names.
bool handOver(Machine& machine, const Added& added) {
    const Place entry{added.place.hive, added.place.view,
                      u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Bromvale"};
    const Key program = machine.readKey(entry);
    if (added.name.empty() || !mayBeOurs(added) || !textOf(program, u"InstallLocation")) return false;
    const Key key = machine.readKey(added.place);
    if (key.found != Found::Yes || key.values.empty() || !isUnchanged(key, added)) return false;
    const std::u16string id = added.place.path.substr(added.place.path.rfind(u'\\') + 1);
    return (textOf(program, id) || machine.setValue(entry, textValue(id, added.name))) &&
           forgetAdded(machine, added);
}

}  // namespace

const std::vector<Component>& components() {
    static const std::vector<Component> list = embeddedComponents();
    return list;
}

bool addComponents(Machine& machine, View view) {
    const std::vector<Added> list = listMissing(machine, view);
    for (const Added& added : list) {
        if (!noteAdded(machine, added)) return false;
    }
    machine.flush();
    for (const Added& added : list) add(machine, added);
    return true;
}

void handOverComponents(Machine& machine, std::vector<Added>& added) {
    std::erase_if(added, [&](const Added& each) { return handOver(machine, each); });
}

bool takeComponentsBack(Machine& machine, std::vector<Added> added) {
    // What lies below goes first.
    std::ranges::stable_sort(added, std::ranges::greater(),
                             [](const Added& each) { return each.place.path.size(); });
    bool all = true;
    for (const Added& each : added) {
        // A key that holds one which couldn't go is still ours.
        if (!all && each.name.empty()) continue;
        all = takeBack(machine, each) && all;
    }
    return all;
}

}  // namespace bromvale::starter
