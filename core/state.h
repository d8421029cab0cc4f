#pragma once
#include <cstdint>
#include <string>

namespace bromvale {

// Module-level state: one instance for the process, filled by Main and read everywhere. Every directory ends
// in a backslash.
extern std::string AppTitle;    // caption of every message box
extern std::string AppVersion;  // major.minor.revision
extern std::string AppTarget;
extern std::string AppPath;  // folder of the program file
extern std::string BackupPath;
extern std::string WinDir;  // this one and ProgramFilesDir with their marks (platform/exact/text.h)
extern std::string SysDir;
extern std::string TmpDir;
extern std::string ProgramFilesDir;
extern std::string AgentDir;
extern std::string AgentCharsDir;
extern std::string ComputerName;
extern std::string UserName;
extern std::string OSName;
extern std::string OSBuild;        // low 16 bits of the build, signed, as text
extern std::string RegFileHeader;  // first text of a .reg file, with two CR LF

// Host of the web services, a name or name:port. Starts as the build's setting; bromvale-offline and the
// tests put another one in its place.
extern std::string WebHost;

// Style 32 and 64 reports reach the log. Set whenever Protokoll is read as 1, never cleared.
extern bool LogAlways;
// At least one setting was enumerated. Never reset.
extern bool SettingsRead;
// wininet.dll is missing: no bug report.
extern bool InternetMissing;
// Result of the latest registration entry of a component; read by nobody.
extern std::int32_t LastRegisterResult;

}  // namespace bromvale
