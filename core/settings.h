#pragma once
#include <cstdint>
#include <string>

#include "platform/registry.h"

namespace bromvale {

inline constexpr const char* kSettingsKey = "Software\\Bromvale";

// The settings in memory, one variable a value of HKEY_CURRENT_USER\Software\Bromvale. Writing a value there
// (SetKeyValue) doesn't change its variable; ReadAppSwitch does.
extern std::int16_t FirstRun;  // value name "1stRun"
extern std::int16_t AgentLoad;
extern std::string AgentType;
extern std::string AgentFile;  // AgentType & ".acs"
// Files of the animation that isn't there any more. Nothing uses them; they tell what the settings above once
// meant.
inline constexpr const char* kAgentControl = "agentctl.dll";
inline constexpr const char* kAgentServer = "agentsvr.exe";
// The help file as it is recorded for keys that ask for help, of which there are none: the program's own
// calls name "Bromvale.chm".
inline constexpr const char* kDefaultHelpFile = "bromvale.chm";
extern std::int16_t AutoClose;
extern std::int16_t AutoEntfernen;
extern std::int16_t AutoFileDelAfterReentry;
extern std::int16_t AutoRegFileDel;
extern std::int16_t AutoScan;
extern std::int16_t DelAfterDays;
extern std::int16_t DelFilePermanent;
extern std::string EMail;
extern std::int16_t Form_Height;  // twips
extern std::int16_t Form_Width;
extern std::int16_t Protokoll;
extern std::int16_t Proxy;
extern std::string ProxyAdresse;
extern std::int16_t ProxyPort;
extern std::int16_t RebootAfterDelete;
extern std::int16_t RebootAfterEntry;
extern std::int16_t ScreenSave;
extern std::int16_t ScreenX;  // top edge in twips: the names are crossed and stay so
extern std::int16_t ScreenY;  // left edge

// Copies the values into the variables; writes the defaults and reads again where nothing could be read. Any
// failure is swallowed and leaves its variable as it was.
void ReadAppSwitch();

// Creates the key and writes all defaults, with the lengths of the table in settings.cpp, which cut some of
// them. Leaves the key's handle, which nobody closes, in `handle`.
void KeysNachtragen(HKEY& handle);

}  // namespace bromvale
