#include "core/state.h"

#include "core/version.h"

namespace bromvale {

std::string AppTitle;
std::string AppVersion;
std::string AppTarget;
std::string AppPath;
std::string BackupPath;
std::string WinDir;
std::string SysDir;
std::string TmpDir;
std::string ProgramFilesDir;
std::string AgentDir;
std::string AgentCharsDir;
std::string ComputerName;
std::string UserName;
std::string OSName;
std::string OSBuild;
std::string RegFileHeader;

std::string WebHost = kWebHost;

bool LogAlways = false;
bool SettingsRead = false;
bool InternetMissing = false;
std::int32_t LastRegisterResult = 0;

}  // namespace bromvale
