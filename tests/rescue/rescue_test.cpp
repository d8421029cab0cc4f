#include "tests/rescue/rescue_test.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace bromvale::testing {

namespace fs = std::filesystem;
using offline::Generation;
using offline::keyAt;
using offline::MadeHive;
using offline::MadeKey;
using offline::textValue;

namespace {

constexpr const char16_t* kFirst = u"{00000000-0000-0000-0000-00000000000%}";

std::u16string guid(char16_t digit) {
    std::u16string text = kFirst;
    std::ranges::replace(text, u'%', digit);
    return text;
}

// In Python, whose parser is another one's.
constexpr const char* kListRows = R"(
import json, sys
rows = json.load(open(sys.argv[1], encoding="utf-8"))["rows"]
for row in rows:
    print(row["number"], row["kind"], row["key"], "->", row["file"], "[" + row["user"] + "]", "[" + row["view"] + "]")
)";

// Without echo, and with line ends as they are written.
constexpr const char* kAtTerminal = R"(
import os, subprocess, sys, termios
terminal, inner = os.openpty()
mode = termios.tcgetattr(inner)
mode[1] &= ~termios.OPOST
mode[3] &= ~termios.ECHO
termios.tcsetattr(inner, termios.TCSANOW, mode)
os.write(terminal, sys.argv[3].encode() + b"\n")
child = subprocess.Popen(sys.argv[4:], stdin=inner, stdout=open(sys.argv[1], "wb"), stderr=inner)
os.close(inner)
seen = b""
try:
    while data := os.read(terminal, 4096):
        seen += data
except OSError:
    pass
open(sys.argv[2], "wb").write(seen)
sys.exit(child.wait())
)";

}  // namespace

void addClass(MadeKey& clsid, std::u16string_view name, std::u16string_view path) {
    keyAt(clsid, std::u16string(name) + u"\\InprocServer32").values.push_back(textValue(u"", path));
}

void addProgram(MadeHive& software, const std::u16string& name, std::u16string_view path) {
    MadeKey& key = keyAt(software.root, u"Microsoft\\Windows\\CurrentVersion\\App Paths\\" + name);
    key.values.push_back(textValue(u"", path));
}

offline::MadeDisk RescueTest::makeDisk(Generation generation) {
    offline::DiskPlan plan;
    plan.generation = generation;
    const bool wide = generation == Generation::SevenX64 || generation >= Generation::Ten;
    plan.software = [wide](MadeHive& software) {
        MadeKey& clsid = keyAt(software.root, u"Classes\\CLSID");
        addClass(clsid, guid(u'1'), u"C:\\Da\\da.dll");
        addClass(clsid, guid(u'2'), u"C:\\Weg\\weg.dll");
        addClass(clsid, guid(u'3'), u"D:\\Spiele\\spiel.dll");
        addClass(clsid, guid(u'4'), u"\\\\server\\freigabe\\netz.dll");
        addClass(clsid, guid(u'5'), u"%SystemRoot%\\System32\\nur64.dll");
        addClass(clsid, guid(u'6'), u"c:\\DA\\Łukasz\\da.dll");
        addClass(clsid, guid(u'7'), u"C:\\Weg\\W\u00E4g \u0141.dll");
        addClass(clsid, guid(u'9'), u"C:\\Da\\da.dll");
        if (!wide) return;
        MadeKey& narrow = keyAt(software.root, u"Classes\\Wow6432Node\\CLSID");
        addClass(narrow, guid(u'1'), u"C:\\Da\\da.dll");
        addClass(narrow, guid(u'A'), u"C:\\Weg\\schmal.dll");
        addClass(narrow, guid(u'B'), u"C:\\Windows\\System32\\nur32.dll");
        addClass(narrow, guid(u'C'), u"C:\\Da\\da.dll");
    };
    plan.classes = [](MadeHive& classes, std::size_t number) {
        MadeKey& clsid = keyAt(classes.root, u"CLSID");
        addClass(clsid, guid(u'1'), u"C:\\Da\\da.dll");
        addClass(clsid, guid(number == 0 ? u'D' : u'E'), u"C:\\Weg\\eigen.dll");
        addClass(clsid, guid(u'F'), u"C:\\Da\\da.dll");
    };
    disk_ = offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "DA" / "Da.dll", "x");
    offline::writeFile(disk() / "Da" / "\xC5\x81ukasz" / "da.dll", "x");
    offline::writeFile(disk_.config.parent_path() / "nur64.dll", "x");
    if (wide) offline::writeFile(disk_.windows / "SysWOW64" / "nur32.dll", "x");
    return disk_;
}

offline::MadeDisk RescueTest::makeDiskWith(const std::function<void(MadeHive& software)>& software,
                                           Generation generation) {
    offline::DiskPlan plan;
    plan.generation = generation;
    plan.software = software;
    offline::MadeDisk made = offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "bootmgr", "x");
    return made;
}

Outcome RescueTest::onDisk(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--windows", disk().string()});
    return run(arguments);
}

Outcome RescueTest::runAtTerminal(std::vector<std::string> arguments, const std::string& answer) {
    arguments.insert(arguments.begin(), {file("terminal.py", kAtTerminal), path("out"), path("err"), answer,
                                         BROMVALE_OFFLINE_TOOL, "--now", "2026-11-15T07:12:09"});
    std::string command = "python3";
    for (const std::string& argument : arguments) command += " '" + argument + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("out"), read("err")};
}

Outcome RescueTest::onDiskAtTerminal(std::vector<std::string> arguments, const std::string& answer) {
    arguments.insert(arguments.begin(), {"--windows", disk().string()});
    return runAtTerminal(arguments, answer);
}

std::string RescueTest::said(const std::vector<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines) all += "bromvale-offline: " + line + "\n";
    return all;
}

std::string RescueTest::behindHives(const std::string& err) {
    const std::string clean = ": clean\n";
    const std::size_t at = err.rfind(clean);
    return at == std::string::npos ? err : err.substr(at + clean.size());
}

std::string RescueTest::everythingOnDisk() const {
    std::vector<std::string> lines;
    for (const auto& entry : fs::recursive_directory_iterator(disk())) {
        std::ostringstream line;
        line << entry.path().string() << ' '
             << fs::last_write_time(entry.symlink_status().type() == fs::file_type::symlink ? disk()
                                                                                            : entry.path())
                    .time_since_epoch()
                    .count();
        if (entry.is_regular_file()) line << ' ' << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        lines.push_back(line.str());
    }
    std::ranges::sort(lines);
    std::string all;
    for (const std::string& line : lines) all += line + '\n';
    return all;
}

std::vector<std::string> RescueTest::rowsOf(std::vector<std::string> arguments) {
    const std::string report = path("report.json");
    arguments.insert(arguments.end(), {"--report", "json", report});
    const Outcome outcome = onDisk(arguments);
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ("", outcome.out);
    file("rows.py", kListRows);
    const std::string command =
        "python3 '" + path("rows.py") + "' '" + report + "' >'" + path("rows.txt") + "' 2>&1";
    EXPECT_EQ(0, std::system(command.c_str()));
    return linesOf(read("rows.txt"));
}

}  // namespace bromvale::testing
