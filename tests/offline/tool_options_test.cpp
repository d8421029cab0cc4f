// bromvale-offline from outside: options, files, exit statuses.
#include <algorithm>
#include <filesystem>
#include <regex>

#include "tests/offline/tool_run.h"

namespace bromvale::testing {
namespace {

using Tool = ToolTest;
using Lines = std::vector<std::string>;

constexpr const char* kReport = "Sehr viele Fehler gefunden. (121 von 385 Eintr\xC3\xA4gen = 31,43%)";

TEST_F(Tool, WithoutOptionsItScansTheExampleMachineAndListsWhatItFound) {
    const Outcome outcome = run({});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    const Lines lines = linesOf(outcome.out);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), kReport), 1);
    const Lines rows = linesBehind(outcome.out, kReport);
    ASSERT_EQ(rows.size(), 121u);
    for (const std::string& row : rows) {
        EXPECT_EQ(row.front(), '[');
        EXPECT_EQ(std::count(row.begin(), row.end(), '\t'), 3) << row;
    }
}

TEST_F(Tool, TheFirstStartRepairsTheSettingsAndShowsTheHelp) {
    const Lines lines = linesOf(run({}).out);
    const auto has = [&lines](const std::string& line) {
        return std::count(lines.begin(), lines.end(), line) == 1;
    };
    EXPECT_TRUE(has("make key: HKEY_CURRENT_USER\\Software\\Bromvale"));
    EXPECT_TRUE(has("set value: HKEY_CURRENT_USER\\Software\\Bromvale: \"ProxyAdresse\"=\"0\" without NUL"));
    EXPECT_TRUE(has("help: command 0 \"Bromvale.chm\""));
    EXPECT_TRUE(has("set value: HKEY_CURRENT_USER\\Software\\Bromvale: \"1stRun\"=\"0\""));
    EXPECT_TRUE(has("window frmMain shown: \"Bromvale\""));
}

TEST_F(Tool, TimesAreToldWhereTheyAreAskedFor) {
    const Outcome outcome = run({"--time"});
    EXPECT_EQ(outcome.out, run({}).out);
    const std::string seconds = "[0-9]+\\.[0-9]{3} s, ";
    EXPECT_TRUE(std::regex_match(
        outcome.err, std::regex("load " + seconds + "[1-9][0-9]* keys, [1-9][0-9]* values\nscan " + seconds +
                                "385 entries, [1-9][0-9]* entries/s\nall " + seconds + "processor " +
                                seconds + "peak memory [1-9][0-9]* KB\n")))
        << outcome.err;
}

TEST_F(Tool, TwoRunsPrintTheSame) {
    EXPECT_EQ(run({}).out, run({}).out);
}

TEST_F(Tool, HelpNamesEveryOptionAndAction) {
    const Outcome outcome = run({"--help"});
    EXPECT_EQ(outcome.status, 0);
    for (const char* word :
         {"--registry", "--drive",    "--app-path", "--os",   "--locale", "--now",       "--user",
          "--computer", "--web-host", "--script",   "--save", "--time",   "click",       "check",
          "text",       "choose",     "select",     "column", "key",      "doubleclick", "mouseup",
          "menu",       "nav",        "tray",       "answer", "browse",   "resize",      "wait",
          "print",      "rows",       "window",     "close",  "at N"}) {
        EXPECT_NE(outcome.out.find(word), std::string::npos) << word;
    }
}

TEST_F(Tool, WrongOptionsAreOneErrorWithStatusTwo) {
    struct Row {
        Lines arguments;
        std::string error;
    };
    const Row rows[] = {
        {{"--nix"}, "unknown option '--nix'"},
        {{"--os"}, "--os wants a value"},
        {{"--os", "Windows 3.1"},
         "unknown system 'Windows 3.1'; use one of the names in --help, or platform.major.minor.build"},
        {{"--locale", "fr"}, "unknown locale 'fr'; there are de and en"},
        {{"--now", "heute"}, "'heute' is no time; write 2026-11-15T07:12:09"},
        {{"--now", "2025-02-29T00:00:00"}, "'2025-02-29T00:00:00' is no time; write 2026-11-15T07:12:09"},
        {{"--drive", "C:"}, "'C:' is no drive; write C:=FOLDER"},
        {{"--drive", "C:=/gibt/es/nicht"}, "'/gibt/es/nicht' is no folder"},
        {{"--app-path", "Programme"}, "'Programme' is no whole path; write C:\\Programme\\Bromvale"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = run(row.arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "bromvale-offline: " + row.error + "\nTry --help.\n");
    }
}

TEST_F(Tool, ABrokenRegistryFileIsOneErrorAndNothingIsWritten) {
    const std::string good = registry("good.reg", "[HKEY_LOCAL_MACHINE\\Software\\A]\n@=\"x\"\n");
    const std::string bad =
        registry("bad.reg", "[HKEY_LOCAL_MACHINE\\Software\\A]\n\"a\"=\"b\"\n\"c\"=dword:xyz\n");
    std::filesystem::create_directory(folder() / "c");
    const Outcome outcome =
        run({"--registry", good, "--registry", bad, "--drive", "C:=" + path("c"), "--save", path("out.reg")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.starts_with("bromvale-offline: " + bad + ":5: ")) << outcome.err;
    EXPECT_EQ(linesOf(outcome.err).size(), 1u);
    EXPECT_EQ(read("out.reg"), "<missing>");
    EXPECT_TRUE(std::filesystem::is_empty(folder() / "c"));
}

TEST_F(Tool, AMissingRegistryFileIsAnError) {
    const Outcome outcome = run({"--registry", path("nix.reg")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(linesOf(outcome.err).size(), 1u);
    EXPECT_TRUE(outcome.err.starts_with("bromvale-offline: " + path("nix.reg") + ": ")) << outcome.err;
}

TEST_F(Tool, AMissingScriptIsAnError) {
    const Outcome outcome = run({"--script", path("nix.txt")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "bromvale-offline: " + path("nix.txt") + ": cannot be read\n");
}

TEST_F(Tool, WhatIsSavedAndReadAgainIsSavedTheSame) {
    const std::string script = file("nothing.txt", "");
    EXPECT_EQ(run({"--script", script, "--save", path("one.reg")}).status, 0);
    EXPECT_EQ(run({"--registry", path("one.reg"), "--script", script, "--save", path("two.reg")}).status, 0);
    EXPECT_GT(read("one.reg").size(), 10000u);
    EXPECT_EQ(read("one.reg"), read("two.reg"));
}

TEST_F(Tool, SeveralRegistryFilesMergeInOrder) {
    const std::string settings = "[HKEY_CURRENT_USER\\Software\\Bromvale]\n\"1stRun\"=\"0\"\n";
    const std::string one =
        registry("one.reg", settings + "[HKEY_LOCAL_MACHINE\\Software\\A]\n\"x\"=\"1\"\n\"y\"=\"1\"\n");
    const std::string two = registry("two.reg", "[HKEY_LOCAL_MACHINE\\Software\\A]\n\"x\"=\"2\"\n\"y\"=-\n");
    const std::string script = file("nothing.txt", "");
    EXPECT_EQ(
        run({"--registry", one, "--registry", two, "--script", script, "--save", path("out.reg")}).status, 0);
    EXPECT_NE(readRegistry("out.reg").find("[HKEY_LOCAL_MACHINE\\Software\\A]\n\"x\"=\"2\"\n\n"),
              std::string::npos);
}

TEST_F(Tool, EachSystemHasItsName) {
    struct Row {
        const char* os;
        const char* name;
    };
    for (const Row row :
         {Row{"Windows 98", "Windows 98"}, Row{"windows 98 se", "Windows 98 SE"},
          Row{"Windows ME", "Windows ME"}, Row{"Windows NT4", "Windows NT4"},
          Row{"Windows 2000", "Windows 2000"}, Row{"Windows XP", "Windows XP"},
          Row{"1.4.10.1998", "Windows 98"}, Row{"2.6.1.7601", "Unbekanntes Betriebssystem"}}) {
        const std::string script = "click cmdStart\nclick cmdStart\n";
        const std::string out = runScript({"--os", row.os}, script).out;
        EXPECT_NE(out.find("; Betriebssystem: " + std::string(row.name) + "\\n\n"), std::string::npos)
            << row.os;
    }
}

TEST_F(Tool, Windows95IsRefused) {
    const Outcome outcome = run({"--os", "Windows 95"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(linesOf(outcome.out).back(),
              "box information OK \"Bromvale\": Windows 95 wird nicht unterst\xC3\xBCtzt. -> OK");
}

TEST_F(Tool, TheEnglishLocaleChangesDatesAndNumbers) {
    const std::string out = run({"--locale", "en"}).out;
    EXPECT_NE(out.find("bromvale.log: 11/15/2026 7:12:09 AM; started; Bromvale; "), std::string::npos);
    EXPECT_NE(out.find("(121 von 385 Eintr\xC3\xA4gen = 31.43%)"), std::string::npos);
}

}  // namespace
}  // namespace bromvale::testing
