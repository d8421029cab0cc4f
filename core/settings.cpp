#include "core/settings.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/numbers.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "core/state.h"
#include "core/value_reader.h"

namespace bromvale {

std::string AgentType;
std::string AgentFile;
std::string EMail;
std::string ProxyAdresse;

namespace {

constexpr std::string_view kModule = "modKeyFunc";

// A setting: its name, its default as it is written, the first `length` bytes of the text, its variable, and
// what follows from a value that was read. The lengths that don't fit their texts are kept on purpose;
// programs of this family have always stored them so, and what reads as 0 or empty after a repair depends on
// it. Two values are only written, with the whole text of something that the running program knows.
struct Setting {
    const char* name;
    const char* defaultText = nullptr;
    DWORD length = {};
    std::int16_t* number = nullptr;
    std::string* text = nullptr;
    void (*after)() = nullptr;
    const std::string* whole = nullptr;
};
using After = void (*)();
constexpr Setting number(const char* name, const char* defaultText, DWORD length, std::int16_t& variable,
                         After after = nullptr) {
    return {.name = name, .defaultText = defaultText, .length = length, .number = &variable, .after = after};
}
// 0 or 1, and 0 from the start.
constexpr Setting flag(const char* name, std::int16_t& variable, After after = nullptr) {
    return number(name, "0", 1, variable, after);
}
constexpr Setting text(const char* name, const char* defaultText, DWORD length, std::string& variable,
                       After after = nullptr) {
    return {.name = name, .defaultText = defaultText, .length = length, .text = &variable, .after = after};
}
constexpr Setting whole(const char* name, const std::string& text) {
    return {.name = name, .whole = &text};
}

void keepLogging() {
    if (Protokoll == 1) LogAlways = true;
}

void nameAgentFile() {
    AgentFile = AgentType + ".acs";
}

// In the order of the writing.
constexpr std::array kSettings{
    number("1stRun", "1", 1, FirstRun),
    flag("AgentLoad", AgentLoad),
    text("AgentType", "", 1, AgentType, nameAgentFile),
    flag("AutoClose", AutoClose),
    flag("AutoEntfernen", AutoEntfernen),
    flag("AutoFileDelAfterReentry", AutoFileDelAfterReentry),
    flag("AutoRegFileDel", AutoRegFileDel),
    flag("AutoScan", AutoScan),
    number("DelAfterDays", "50", 0, DelAfterDays),
    number("DelFilePermanent", "0", 0, DelFilePermanent),
    text("EMail", "", 0, EMail),
    number("Form_Height", "7700", 4, Form_Height),
    number("Form_Width", "10515", 5, Form_Width),
    whole("InstallDir", AppPath),
    flag("Protokoll", Protokoll, keepLogging),
    flag("Proxy", Proxy),
    text("ProxyAdresse", "0.0.0.0", 1, ProxyAdresse),
    number("ProxyPort", "80", 1, ProxyPort),
    flag("RebootAfterDelete", RebootAfterDelete),
    flag("RebootAfterEntry", RebootAfterEntry),
    flag("ScreenSave", ScreenSave),
    number("ScreenX", "0", 0, ScreenX),
    number("ScreenY", "0", 0, ScreenY),
    whole("Version", AppVersion),
};

// Any name, as the registry may hold it; null where it is no setting.
const Setting* settingNamed(std::string_view name) {
    const auto* const found = std::ranges::find(kSettings, name, &Setting::name);
    return found == kSettings.end() ? nullptr : found;
}

void store(const char* name, std::string_view text) {
    SetKeyValue(kHiveCurrentUser, kSettingsKey, name, text, REG_SZ, KEY_SET_VALUE);
}

// No number, or one that is too large, leaves the variable as it was.
void take(std::string_view name, std::string_view text) {
    const Setting* const setting = settingNamed(name);
    if (setting == nullptr) return;
    if (setting->number != nullptr) quietly([&] { *setting->number = toInt16(text); });
    if (setting->text != nullptr) quietly([&] { *setting->text = text; });
    if (setting->after != nullptr) setting->after();
}

void readValues(HKEY key, const Tags& tags) {
    for (ValueReader reader(key); reader.next();) {
        tags.trace([&] { return std::string(reader.name()).append("=").append(reader.text()); });
        SettingsRead = true;
        if (reader.dataLength() > 0) take(reader.name(), reader.text());
    }
}

// While the repair of an outer pass is at work. Where the key can be neither read nor made, the two routines
// would call each other for ever: the second fruitless pass is the last, and one report is enough.
bool repairing = false;

void repair(HKEY& handle) {
    if (repairing) return;
    repairing = true;
    KeysNachtragen(handle);
    ReadAppSwitch();
    repairing = false;
}

}  // namespace

const char* settingName(const std::int16_t& setting) {
    return std::ranges::find(kSettings, &setting, &Setting::number)->name;
}

void storeSetting(const std::int16_t& setting, std::string_view text) {
    store(settingName(setting), text);
}

void storeSetting(const std::string& setting, std::string_view text) {
    store(std::ranges::find(kSettings, &setting, &Setting::text)->name, text);
}

void ReadAppSwitch() {
    constexpr Routine routine{{kModule, "ReadAppSwitch"}};
    routine.started();
    HKEY handle = nullptr;
    if (RegOpenKeyA(HKEY_CURRENT_USER, kSettingsKey, &handle) == ERROR_SUCCESS) {
        readValues(handle, routine);
        static_cast<void>(RegCloseKey(handle));
    }
    if (!SettingsRead) repair(handle);
    routine.ended();
}

void KeysNachtragen(HKEY& handle) {
    constexpr Tags routine{kModule, "KeysNachtragen"};
    char keyClass[] = "1";
    DWORD disposition = 0;
    static_cast<void>(RegCreateKeyExA(HKEY_CURRENT_USER, kSettingsKey, 0, keyClass, 0, KEY_SET_VALUE, nullptr,
                                      &handle, &disposition));
    for (const Setting& row : kSettings) {
        const char* const text = row.whole != nullptr ? row.whole->c_str() : row.defaultText;
        const DWORD length = row.whole != nullptr ? static_cast<DWORD>(row.whole->size()) : row.length;
        static_cast<void>(
            RegSetValueExA(handle, row.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), length));
    }
    ErrHandle(routine.modul, routine.funktion, "Die Registryeinträge mussten nachgetragen werden.", 10000,
              "Die Programmeinstellungen konnten nicht gelesen werden.\r\nInstallieren Sie das Programm neu.",
              kStyleExclamation, kHide);
}

}  // namespace bromvale
