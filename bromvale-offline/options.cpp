#include "bromvale-offline/options.h"

#include <sys/stat.h>

#include <array>
#include <cstdio>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

using Problem = std::optional<std::string>;

Problem readDrive(Options& options, const std::string& text) {
    const char letter = text.empty() ? '\0' : upper(text[0]);
    if (text.size() < 4 || letter < 'A' || letter > 'Z' || text[1] != ':' || text[2] != '=') {
        return "'" + text + "' is no drive; write C:=FOLDER";
    }
    struct stat state {};
    const std::string folder = text.substr(3);
    if (::stat(folder.c_str(), &state) != 0 || !S_ISDIR(state.st_mode))
        return "'" + folder + "' is no folder";
    options.drives[letter] = folder;
    return {};
}

Problem readOs(Options& options, const std::string& text) {
    const auto os = osByName(ansiFromUtf8(text));
    if (!os)
        return "unknown system '" + text + "'; use one of the names in --help, or platform.major.minor.build";
    options.os = *os;
    return {};
}

Problem readLocale(Options& options, const std::string& text) {
    if (text != "de" && text != "en") return "unknown locale '" + text + "'; there are de and en";
    options.english = text == "en";
    return {};
}

Problem readNow(Options& options, const std::string& text) {
    unsigned numbers[6] = {};
    char rest = '\0';
    const int found = std::sscanf(text.c_str(), "%4u-%2u-%2uT%2u:%2u:%2u%c", &numbers[0], &numbers[1],
                                  &numbers[2], &numbers[3], &numbers[4], &numbers[5], &rest);
    const auto word = [&numbers](int index) { return static_cast<WORD>(numbers[index]); };
    const SYSTEMTIME time{word(0), word(1), 0, word(2), word(3), word(4), word(5), 0};
    if (found != 6 || !isValid(time)) return "'" + text + "' is no time; write 2026-11-15T07:12:09";
    options.now = time;
    return {};
}

Problem readAppPath(Options& options, const std::string& text) {
    const std::u16string path = wideFromUtf8(text).text;
    const bool whole = path.size() >= 3 && upperUnit(path[0]) >= u'A' && upperUnit(path[0]) <= u'Z' &&
                       path[1] == u':' && path[2] == u'\\';
    if (!whole) return "'" + text + "' is no whole path; write C:\\Programme\\Bromvale";
    options.appPath = path;
    return {};
}

struct OptionRow {
    const char* name;
    Problem (*read)(Options&, const std::string&);
};

template <std::string Options::*Field>
Problem keep(Options& options, const std::string& text) {
    options.*Field = text;
    return {};
}

template <std::string Options::*Field>
Problem keepAnsi(Options& options, const std::string& text) {
    options.*Field = ansiFromUtf8(text);
    return {};
}

// The name of the machine's user, or which one of a disk's.
Problem readUser(Options& options, const std::string& text) {
    options.rescue.user = text;
    return keepAnsi<&Options::user>(options, text);
}

Problem addRegistry(Options& options, const std::string& text) {
    options.registries.push_back(text);
    return {};
}

constexpr std::array kOptions{
    OptionRow{"--registry", addRegistry},
    OptionRow{"--drive", readDrive},
    OptionRow{"--app-path", readAppPath},
    OptionRow{"--os", readOs},
    OptionRow{"--locale", readLocale},
    OptionRow{"--now", readNow},
    OptionRow{"--user", readUser},
    OptionRow{"--computer", keepAnsi<&Options::computer>},
    OptionRow{"--web-host", keepAnsi<&Options::webHost>},
    OptionRow{"--script", keep<&Options::script>},
    OptionRow{"--save", keep<&Options::save>},
};

}  // namespace

std::optional<std::string> readOptions(int count, char** arguments, Options& options) {
    for (int i = 1; i < count; ++i) {
        std::string name = arguments[i];
        if (name == "--") {
            for (++i; i < count; ++i) {
                if (!options.commandLine.empty()) options.commandLine += ' ';
                options.commandLine += ansiFromUtf8(arguments[i]);
            }
            return {};
        }
        if (name == "--help" || name == "-h") {
            options.help = true;
            continue;
        }
        if (name == "--time") {
            options.time = true;
            continue;
        }
        Problem wrong;
        const std::span<char* const> rest(arguments + i, static_cast<std::size_t>(count - i));
        if (const std::size_t taken = readRescueOption(rest, options.rescue, wrong)) {
            if (wrong) return wrong;
            i += static_cast<int>(taken) - 1;
            continue;
        }
        std::optional<std::string> value;
        if (const std::size_t sign = name.find('='); name.starts_with("--") && sign != std::string::npos) {
            value = name.substr(sign + 1);
            name.resize(sign);
        }
        const OptionRow* row = nullptr;
        for (const OptionRow& each : kOptions) {
            if (name == each.name) row = &each;
        }
        if (row == nullptr) return "unknown option '" + name + "'";
        if (!value) {
            if (i + 1 >= count) return name + " wants a value";
            value = arguments[++i];
        }
        if (Problem problem = row->read(options, *value)) return problem;
    }
    if (options.rescue.wanted() && (!options.script.empty() || !options.save.empty()))
        return "--script and --save drive the program's window; raw hives, disks and reports are looked at "
               "without it";
    return checkTogether(options.rescue);
}

}  // namespace bromvale::offline
