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
    options.drives.emplace_back(letter, folder);
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
    OptionRow{"--user", keepAnsi<&Options::user>},
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
    return {};
}

const char* helpText() {
    return R"(bromvale-offline: Bromvale on exported registries and on folders that stand for drives

  bromvale-offline [OPTION...] [-- COMMANDLINE]

  --registry FILE.reg   what the registry editor exported; several files merge in order.
                        Without one an example machine is used
  --drive C:=FOLDER     a folder stands for the drive; all other drives are empty and live in memory
  --app-path PATH       where the program lies (C:\Programme\Bromvale)
  --os NAME             "Windows 95", "Windows 98", "Windows 98 SE", "Windows ME", "Windows NT4",
                        "Windows 2000", "Windows XP" (default), or platform.major.minor.build
  --locale de|en        date, time and number formats (de)
  --now TIME            2026-11-15T07:12:09 (default: the time now); the clock only moves when the program waits
  --user NAME           user (Benutzer)
  --computer NAME       computer (RECHNER)
  --web-host HOST[:PORT]  stands in for the host of the web services
  --script FILE|-       actions, one a line; without a script the program scans and prints what it found
  --save FILE.reg       writes the registry as it is at the end; the files that were read never change
  --time                seconds of loading and scanning, entries a second and peak memory, to standard error
  --help                this text

Actions of a script (empty lines and lines that start with # are passed over):

  click NAME            a button, check box or option button      print NAME      its text, caption or value
  check NAME 0|1        a check box                               rows NAME       a list's rows, columns by tabs
  text NAME TEXT        types a text, \n for a line end           window          all visible controls
  choose NAME TEXT      an entry of a combo box                   close [NAME]    the window's close box
  select NAME ROWS      1 3-5, all or none                        answer BUTTON   of the next message box: OK, Ja ...
  column NAME N         a column header                           browse PATH     folder for the next folder dialog
  key NAME KEY          F5, Delete, Return, Alt+S ...             menu NAME       entry of the menu that opened last
  doubleclick NAME ROW  a row of a list                           nav CAPTION     an icon of the navigation bar
  mouseup NAME BUTTON   left, right or middle, on a list          tray BUTTON     left, right or double, on the icon
  resize W H            the main window, in twips                 wait SECONDS    lets the clock run
  save PATH             file for the next dialog "save as"
  at N ACTION           runs the action when events are served for the N-th time from here

Everything that the program shows, asks, starts or writes goes to standard output, one line each, UTF-8; line ends in
texts are written \n.

Exit status: 0 done, 1 an action of the script could not be done, 2 wrong option or unreadable file; otherwise
what the program itself ended with.
)";
}

}  // namespace bromvale::offline
