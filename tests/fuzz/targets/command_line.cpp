// Command lines of uninstallers: each is started or fails in one of the ways that its callers know, and a
// program in quotes is started whatever its switches are.
#include "core/command_start.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "platform/shell.h"
#include "tests/fuzz/program.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

using offline::EventKind;

constexpr std::array kKnown{53, 5, 70, 7, 52, 71, 76};
constexpr std::string_view kProgram = "C:\\Programme\\Ein Name\\weg.exe";

bool makeFiles() {
    for (const std::string_view file :
         {kProgram, std::string_view("C:\\Programme\\Ein.exe"), std::string_view("C:\\a b.txt"),
          std::string_view("C:\\WINDOWS\\notepad.exe")})
        offline::machine().drives.writeFile(file, "MZ");
    return true;
}

// 0 or the failure's number.
int start(std::string_view line) {
    offline::Machine& machine = freshMachine();
    try {
        startCommand(line, SW_SHOWNORMAL);
    } catch (const Failure& failure) {
        require(std::ranges::find(kKnown, failure.number) != kKnown.end(), "a failure that is told of");
        require(machine.events.count(EventKind::Run) == 0, "what has failed was not started");
        return failure.number;
    }
    const auto handed = machine.events.count(EventKind::ShellExecute);
    require(machine.events.count(EventKind::Run) + handed == 1, "one program is started");
    return 0;
}

void run(std::string_view input) {
    static const bool made = makeFiles();
    static_cast<void>(made);
    const std::string line(input.substr(0, 32000));
    const int result = start(line);
    require(result == 0 || start("  " + line) == result, "blanks before it don't count");
    static_cast<void>(isExactCommand(line));
    // A mark is a character that the code page lacks.
    if (line.find('\x1A') != std::string::npos) return;
    require(start("\"" + std::string(kProgram) + "\" " + line) == 0, "a program in quotes");
}

std::vector<std::string> seeds() {
    return {"C:\\Programme\\Ein Name\\weg.exe /still",
            "\"C:\\Programme\\Ein Name\\weg\" -x",
            "notepad",
            "%windir%\\notepad.exe a",
            "%SystemRoot%\\x.exe",
            "D:\\weg.exe",
            "\\\\s\\f\\weg.exe",
            "http://a/b",
            "\"\"",
            "C:\\a b.txt",
            "C:/Programme/Ein.exe",
            "weg*.exe",
            "\x1A"
            "00321 x",
            " \t"};
}

const KnownTarget kTarget({"command_line", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
