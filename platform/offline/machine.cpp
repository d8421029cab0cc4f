#include "platform/offline/machine.h"

#include <array>
#include <charconv>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

struct NamedOs {
    std::string_view name;
    OsVersion version;
};

// On the 9x family the high word of the build number repeats major and minor version.
constexpr std::array kSystems{
    NamedOs{"Windows 95", {1, 4, 0, 0x040003B6}},     NamedOs{"Windows 98", {1, 4, 10, 0x040A07CE}},
    NamedOs{"Windows 98 SE", {1, 4, 10, 0x040A08AE}}, NamedOs{"Windows ME", {1, 4, 90, 0x045A0BB8}},
    NamedOs{"Windows NT4", {2, 4, 0, 1381}},          NamedOs{"Windows 2000", {2, 5, 0, 2195}},
    NamedOs{"Windows XP", {2, 5, 1, 2600}},
};

std::optional<OsVersion> osByNumbers(std::string_view text) {
    std::array<DWORD, 4> numbers{};
    const char* at = text.data();
    const char* end = at + text.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && (at == end || *at++ != '.')) return std::nullopt;
        const auto [next, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc()) return std::nullopt;
        at = next;
    }
    if (at != end) return std::nullopt;
    OsVersion os{numbers[0], numbers[1], numbers[2], numbers[3]};
    if (os.platform == 1 && os.build < 0x10000) os.build |= os.major << 24 | os.minor << 16;
    return os;
}

}  // namespace

std::optional<OsVersion> osByName(std::string_view name) {
    for (const NamedOs& system : kSystems) {
        if (equalNoCase(system.name, name)) return system.version;
    }
    return osByNumbers(name);
}

Machine::Machine() {
    drives.addMemory('C');
    clock.beforeAdvance = [this] {
        pump.noteTimers();
        pump.timePassed();
    };
    drives.currentDirectory = appPath_;
    prepareFolders();
}

std::string Machine::systemFolder() const {
    return windowsFolder() + (os_.isNt() ? "\\SYSTEM32" : "\\SYSTEM");
}

void Machine::setFolders(std::string_view windows, std::string_view programs) {
    otherHalf.windows = windows;
    programs_ = programs;
    prepareFolders();
}

void Machine::setOs(const OsVersion& os) {
    os_ = os;
    registry.setNtFamily(os.isNt());
    textRules.unicode = os.isNt();
    prepareFolders();
}

bool Machine::lacksMachineRights() const {
    return os_.isNt() && os_.major >= 6 && rights.token != Rights::Token::Full;
}

std::string Machine::appPath() const {
    return ansiFromStored(appPath_);
}

void Machine::setAppPath(const WideText& path) {
    appPath_ = StoredText(path.view()).view();
    while (appPath_.size() > 3 && appPath_.back() == '\\') appPath_.pop_back();
    if (appPath_.size() > 1 && appPath_[1] == ':' && !drives.has(appPath_[0])) drives.addMemory(appPath_[0]);
    drives.currentDirectory = appPath_;
    prepareFolders();
}

void Machine::prepareFolders() {
    drives.ownFolders = {windowsFolder(), systemFolder(), tempFolder(), programFiles(), appPath_};
    for (const std::string& folder : drives.ownFolders) {
        Location location;
        if (drives.locateReal(folder, location) == 0 && !location.onHost) drives.makeFolders(location);
    }
}

Machine& machine() {
    static Machine instance;
    return instance;
}

std::size_t Machine::openFiles() const {
    std::size_t count = 0;
    kernelObjects.each([&count](const KernelObject& object) { count += object.file != nullptr; });
    return count;
}

Faults& faults() {
    return machine().faults;
}

TextRules& textRules() {
    return machine().textRules;
}

bool refusesWide() {
    return !machine().os().isNt() && !failed(ERROR_CALL_NOT_IMPLEMENTED);
}

bool failsHere(std::string_view operation) {
    const auto result = faults().at(operation);
    if (result) SetLastError(static_cast<DWORD>(*result));
    return result.has_value();
}

}  // namespace bromvale::offline
