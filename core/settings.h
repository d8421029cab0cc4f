#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace bromvale {

inline constexpr const char* kSettingsKey = "Software\\Bromvale";

// The settings in memory, one variable a value of HKEY_CURRENT_USER\Software\Bromvale. All else that is to be
// said of a setting stands in its row in settings.cpp. Storing a value doesn't change its variable;
// ReadAppSwitch does.
inline std::int16_t FirstRun = 0;  // value name "1stRun"
inline std::int16_t AgentLoad = 0;
extern std::string AgentType;
extern std::string AgentFile;  // AgentType & ".acs"
// Files of the animation that isn't there any more. Nothing uses them; they tell what the settings above once
// meant.
inline constexpr const char* kAgentControl = "agentctl.dll";
inline constexpr const char* kAgentServer = "agentsvr.exe";
// The help file as it is recorded for keys that ask for help, of which there are none: the program's own
// calls name "Bromvale.chm".
inline constexpr const char* kDefaultHelpFile = "bromvale.chm";
inline std::int16_t AutoClose = 0;
inline std::int16_t AutoEntfernen = 0;
inline std::int16_t AutoFileDelAfterReentry = 0;
inline std::int16_t AutoRegFileDel = 0;
inline std::int16_t AutoScan = 0;
inline std::int16_t DelAfterDays = 0;
inline std::int16_t DelFilePermanent = 0;
extern std::string EMail;
inline std::int16_t Form_Height = 0;  // twips
inline std::int16_t Form_Width = 0;
inline std::int16_t Protokoll = 0;
inline std::int16_t Proxy = 0;
extern std::string ProxyAdresse;
inline std::int16_t ProxyPort = 0;
inline std::int16_t RebootAfterDelete = 0;
inline std::int16_t RebootAfterEntry = 0;
inline std::int16_t ScreenSave = 0;
inline std::int16_t ScreenX = 0;  // top edge in twips: the names are crossed and stay so
inline std::int16_t ScreenY = 0;  // left edge

// Copies the values into the variables; writes the defaults and reads again where nothing could be read. Any
// failure is swallowed and leaves its variable as it was.
void ReadAppSwitch();

// Writes one setting, named by its variable, as a text.
void storeSetting(const std::int16_t& setting, std::string_view text);
void storeSetting(const std::string& setting, std::string_view text);
// The name of its value.
[[nodiscard]] const char* settingName(const std::int16_t& setting);

// Creates the key and writes all defaults, with the lengths of the table in settings.cpp, which cut some of
// them. Leaves the key's handle, which nobody closes, in `handle`.
void KeysNachtragen(HKEY& handle);

}  // namespace bromvale
