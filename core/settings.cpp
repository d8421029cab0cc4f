#include "core/settings.h"

#include <array>
#include <string_view>

#include "base/numbers.h"
#include "core/handling.h"
#include "core/state.h"
#include "core/value_reader.h"

namespace bromvale {

std::int16_t FirstRun = 0;
std::int16_t AgentLoad = 0;
std::string AgentType;
std::string AgentFile;
std::int16_t AutoClose = 0;
std::int16_t AutoEntfernen = 0;
std::int16_t AutoFileDelAfterReentry = 0;
std::int16_t AutoRegFileDel = 0;
std::int16_t AutoScan = 0;
std::int16_t DelAfterDays = 0;
std::int16_t DelFilePermanent = 0;
std::string EMail;
std::int16_t Form_Height = 0;
std::int16_t Form_Width = 0;
std::int16_t Protokoll = 0;
std::int16_t Proxy = 0;
std::string ProxyAdresse;
std::int16_t ProxyPort = 0;
std::int16_t RebootAfterDelete = 0;
std::int16_t RebootAfterEntry = 0;
std::int16_t ScreenSave = 0;
std::int16_t ScreenX = 0;
std::int16_t ScreenY = 0;

namespace {

constexpr std::string_view kModule = "modKeyFunc";

// A default as it is written: the first `length` bytes of the text. The lengths that don't fit their texts
// are kept on purpose; programs of this family have always stored them so, and what reads as 0 or empty after
// a repair depends on it. Of the two texts that only the running program knows, the whole is written.
struct DefaultRow {
    const char* name;
    const char* text;
    DWORD length;
    const std::string* variable = nullptr;
};

const std::array kDefaults{
    DefaultRow{"1stRun", "1", 1},
    DefaultRow{"AgentLoad", "0", 1},
    DefaultRow{"AgentType", "", 1},
    DefaultRow{"AutoClose", "0", 1},
    DefaultRow{"AutoEntfernen", "0", 1},
    DefaultRow{"AutoFileDelAfterReentry", "0", 1},
    DefaultRow{"AutoRegFileDel", "0", 1},
    DefaultRow{"AutoScan", "0", 1},
    DefaultRow{"DelAfterDays", "50", 0},
    DefaultRow{"DelFilePermanent", "0", 0},
    DefaultRow{"EMail", "", 0},
    DefaultRow{"Form_Height", "7700", 4},
    DefaultRow{"Form_Width", "10515", 5},
    DefaultRow{"InstallDir", nullptr, 0, &AppPath},
    DefaultRow{"Protokoll", "0", 1},
    DefaultRow{"Proxy", "0", 1},
    DefaultRow{"ProxyAdresse", "0.0.0.0", 1},
    DefaultRow{"ProxyPort", "80", 1},
    DefaultRow{"RebootAfterDelete", "0", 1},
    DefaultRow{"RebootAfterEntry", "0", 1},
    DefaultRow{"ScreenSave", "0", 1},
    DefaultRow{"ScreenX", "0", 0},
    DefaultRow{"ScreenY", "0", 0},
    DefaultRow{"Version", nullptr, 0, &AppVersion},
};
static_assert(kDefaults.size() == 24);

// Where a value goes, and what follows from it.
struct ReadRow {
    std::string_view name;
    std::int16_t* number;
    std::string* text = nullptr;
    void (*after)() = nullptr;
};

void keepLogging() {
    if (Protokoll == 1) LogAlways = true;
}

void nameAgentFile() {
    AgentFile = AgentType + ".acs";
}

// In the order of the comparison.
constexpr std::array kReaders{
    ReadRow{"ScreenSave", &ScreenSave},
    ReadRow{"ScreenX", &ScreenX},
    ReadRow{"ScreenY", &ScreenY},
    ReadRow{"Form_Height", &Form_Height},
    ReadRow{"Form_Width", &Form_Width},
    ReadRow{"1stRun", &FirstRun},
    ReadRow{"AutoScan", &AutoScan},
    ReadRow{"AutoClose", &AutoClose},
    ReadRow{"AutoEntfernen", &AutoEntfernen},
    ReadRow{"AutoRegFileDel", &AutoRegFileDel},
    ReadRow{"DelAfterDays", &DelAfterDays},
    ReadRow{"Protokoll", &Protokoll, nullptr, keepLogging},
    ReadRow{"Proxy", &Proxy},
    ReadRow{"ProxyAdresse", nullptr, &ProxyAdresse},
    ReadRow{"ProxyPort", &ProxyPort},
    ReadRow{"AgentLoad", &AgentLoad},
    ReadRow{"AgentType", nullptr, &AgentType, nameAgentFile},
    ReadRow{"EMail", nullptr, &EMail},
    ReadRow{"RebootAfterDelete", &RebootAfterDelete},
    ReadRow{"RebootAfterEntry", &RebootAfterEntry},
    ReadRow{"AutoFileDelAfterReentry", &AutoFileDelAfterReentry},
    ReadRow{"DelFilePermanent", &DelFilePermanent},
};

void store(const ReadRow& row, std::string_view text) {
    // No number, or one that is too large, leaves the variable as it was.
    attempt(kGoOn, [&] {
        if (row.number != nullptr) {
            *row.number = toInt16(text);
        } else {
            *row.text = text;
        }
    });
    if (row.after != nullptr) row.after();
}

void store(std::string_view name, std::string_view text) {
    for (const ReadRow& row : kReaders) {
        if (row.name == name) return store(row, text);
    }
}

void readValues(HKEY key, const Tags& tags) {
    for (ValueReader reader(key); reader.next();) {
        tags.trace([&] { return std::string(reader.name()).append("=").append(reader.text()); });
        SettingsRead = true;
        if (reader.dataLength() > 0) store(reader.name(), reader.text());
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

void ReadAppSwitch() {
    const Tags tags{kModule, "ReadAppSwitch"};
    tags.trace("started");
    HKEY handle = nullptr;
    if (RegOpenKeyA(HKEY_CURRENT_USER, kSettingsKey, &handle) == ERROR_SUCCESS) {
        readValues(handle, tags);
        static_cast<void>(RegCloseKey(handle));
    }
    if (!SettingsRead) repair(handle);
    tags.trace("endet");
}

void KeysNachtragen(HKEY& handle) {
    const Tags tags{kModule, "KeysNachtragen"};
    const ReportAnd onFailure{Ending::Next, tags, kStyleInformation};
    attempt(onFailure, [&] {
        char keyClass[] = "1";
        DWORD disposition = 0;
        static_cast<void>(RegCreateKeyExA(HKEY_CURRENT_USER, kSettingsKey, 0, keyClass, 0, KEY_SET_VALUE,
                                          nullptr, &handle, &disposition));
    });
    for (const DefaultRow& row : kDefaults) {
        attempt(onFailure, [&] {
            const char* text = row.variable != nullptr ? row.variable->c_str() : row.text;
            const DWORD length =
                row.variable != nullptr ? static_cast<DWORD>(row.variable->size()) : row.length;
            static_cast<void>(
                RegSetValueExA(handle, row.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), length));
        });
    }
    ErrHandle(tags.modul, tags.funktion, "Die Registryeinträge mussten nachgetragen werden.", 10000,
              "Die Programmeinstellungen konnten nicht gelesen werden.\r\nInstallieren Sie das Programm neu.",
              kStyleExclamation, kHide);
}

}  // namespace bromvale
