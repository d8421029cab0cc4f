#pragma once
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bromvale-offline/rescue/rescue_options.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {

// What the command line asks for. Paths of the host are UTF-8, the rest is Windows-1252.
struct Options {
    std::vector<std::string> registries;
    std::map<char, std::string>
        drives;  // the letter, and the folder that stands for it; the last one given holds
    std::u16string appPath = u"C:\\Programme\\Bromvale";
    OsVersion os;
    bool english = false;
    std::optional<SYSTEMTIME> now;
    std::string user;
    std::string computer;
    std::string webHost;
    std::string script;  // "-" for standard input, empty for none
    std::string save;
    std::string commandLine;
    bool help = false;
    bool time = false;
    RescueOptions rescue;  // raw hives and disks
};

// Nothing, or what is wrong with the command line.
[[nodiscard]] std::optional<std::string> readOptions(int count, char** arguments, Options& options);
[[nodiscard]] const char* helpText();

}  // namespace bromvale::offline
