#include "tests/starter/fake_machine.h"

#include <algorithm>

namespace bromvale::starter {
namespace {

// Of the keys in use, those below Software\Classes are there once a width.
auto address(const Place& place) {
    const bool isSplit = place.path.starts_with(u"Software\\Classes");
    return std::tuple{place.hive, isSplit ? place.view : View::Bits32, place.path};
}

int ids = 0;

}  // namespace

bool FakeMachine::change(const std::function<void()>& what) {
    ++changes;
    const bool isRefused = changes == refuse || (refuseFrom != 0 && changes >= refuseFrom);
    if (!isRefused) what();
    if (changes == killAfter) throw Killed();
    return !isRefused;
}

void FakeMachine::put(const Place& place, std::vector<Value> values) {
    registry[address(place)].values = std::move(values);
}

const FakeMachine::FakeKey* FakeMachine::find(const Place& place) const {
    const auto found = registry.find(address(place));
    return found == registry.end() ? nullptr : &found->second;
}

Key FakeMachine::readKey(const Place& place) {
    const FakeKey* const key = find(place);
    if (key == nullptr) return {};
    auto above = address(place);
    std::get<2>(above) += u'\\';
    const bool hasSubKeys = std::ranges::any_of(registry, [&above](const auto& each) {
        const auto& [hive, view, path] = each.first;
        return hive == std::get<0>(above) && view == std::get<1>(above) &&
               path.starts_with(std::get<2>(above));
    });
    return {Found::Yes, key->values, hasSubKeys};
}

bool FakeMachine::mayCreate(const Place& place) {
    return place.hive == Hive::User || isAdministrator;
}

Created FakeMachine::createKey(const Place& place) {
    if (!mayCreate(place)) return Created::Refused;
    if (find(place) != nullptr) return Created::WasThere;
    return change([&] { put(place); }) ? Created::New : Created::Refused;
}

bool FakeMachine::setValue(const Place& place, const Value& value) {
    if (find(place) == nullptr || !mayCreate(place)) return false;
    return change([&] {
        std::vector<Value>& values = registry[address(place)].values;
        const auto found = std::ranges::find(values, value.name, &Value::name);
        if (found == values.end()) {
            values.push_back(value);
        } else {
            *found = value;
        }
    });
}

bool FakeMachine::removeValue(const Place& place, const std::u16string& name) {
    if (find(place) == nullptr || !mayCreate(place)) return false;
    return change([&] {
        std::erase_if(registry[address(place)].values,
                      [&](const Value& value) { return value.name == name; });
    });
}

bool FakeMachine::removeKey(const Place& place) {
    const Key key = readKey(place);
    if (key.found == Found::No || key.hasSubKeys || !mayCreate(place)) return false;
    return change([&] { registry.erase(address(place)); });
}

File FakeMachine::readFile(std::string_view name) {
    if (without != Found::Yes) return {without, {}};
    const auto found = files.find(name);
    if (found == files.end()) return {};
    if (found->second.size() > kLargestFile) return {Found::Unknown, {}};
    return {Found::Yes, found->second};
}

bool FakeMachine::writeFile(std::string_view name, std::string_view bytes) {
    if (!isWritable || without != Found::Yes) return false;
    const bool done = change([&] { files[std::string(name)] = bytes.substr(0, bytes.size() / 2); }) &&
                      change([&] { files[std::string(name)] = bytes; });
    if (!done) files.erase(std::string(name));
    return done;
}

bool FakeMachine::replaceFile(std::string_view from, std::string_view to) {
    if (!isWritable || without != Found::Yes) return false;
    if (!replacesInOneStep && !change([&] { files.erase(std::string(to)); })) return false;
    return change([&] {
        files[std::string(to)] = files[std::string(from)];
        files.erase(std::string(from));
    });
}

void FakeMachine::removeFile(std::string_view name) {
    if (isWritable && without == Found::Yes) change([&] { files.erase(std::string(name)); });
}

std::string FakeMachine::toCodePage(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) bytes += unit < 0x100 ? static_cast<char>(unit) : '?';
    return bytes;
}

std::u16string FakeMachine::fromCodePage(std::string_view text) {
    std::u16string units;
    for (const char c : text) units += static_cast<unsigned char>(c);
    return units;
}

std::u16string FakeMachine::newId() {
    const std::string number = std::to_string(++ids);
    return u"run-" + std::u16string(number.begin(), number.end());
}

bool FakeMachine::startProgram(View) {
    return change([&] { ++starts; });
}

void FakeMachine::waitForProgram(const std::function<void()>& atSessionsEnd) {
    program(*this);
    change([] {});
    if (!sessionEnds) return;
    otherProgram = programOutlivesSession;
    atSessionsEnd();
    // The system ends the starter together with the session.
    throw Killed();
}

Answer FakeMachine::ask(const std::string& text, Buttons) {
    told.push_back(text);
    atQuestion(*this);
    return answer;
}

}  // namespace bromvale::starter
