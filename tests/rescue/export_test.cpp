// Exports of raw hives as registry files, and what stands against one.
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <utility>

#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;

class Export : public RescueTest {
  protected:
    void refuses(std::vector<std::string> arguments, const std::string& text) {
        const Outcome outcome = onDisk(std::move(arguments));
        EXPECT_EQ(2, outcome.status) << text;
        EXPECT_EQ("", outcome.out) << text;
        EXPECT_EQ(said({text}), behindHives(outcome.err));
    }
};

TEST_F(Export, WhatStandsAgainstOne) {
    const offline::MadeDisk made = makeDisk(Generation::SevenX64);
    const std::string out = path("x.reg");
    const std::string one = "an export is of one user and one view; choose with --user and --view";
    refuses({"--user", "all", "--export", out}, one);
    refuses({"--user", "jgross", "--view", "both", "--export", out}, one);
    refuses({"--user", "jgross", "--export", out, "HKEY_LOCAL_MACHINE\\Nicht da\\"},
            "there is no key HKEY_LOCAL_MACHINE\\Nicht da");
    refuses({"--user", "jgross", "--export", path("nicht/da.reg")},
            path("nicht/da.reg") + ": cannot be written: No such file or directory");
    refuses({"--user", "jgross", "--export", "/dev/full"},
            "/dev/full: cannot be written: No space left on device");
    refuses({"--user", "jgross", "--export", folder().string()},
            folder().string() + ": cannot be written: Is a directory");
    for (const std::string& hive : {made.software.string(), made.users[0].hive.string()})
        refuses({"--user", "jgross", "--export", hive},
                hive + ": there is a hive or a log of one, which is not replaced; give another name");
    const std::string old = file("alt.dat", "CREGx");
    refuses({"--user", "jgross", "--export", old},
            old + ": there is a hive or a log of one, which is not replaced; give another name");
    EXPECT_FALSE(std::filesystem::exists(out));
    file("kurz.reg", "reg");
    EXPECT_EQ(0, onDisk({"--user", "jgross", "--export", path("kurz.reg")}).status);
}

TEST_F(Export, WhatIsWrittenInPartGoes) {
    makeDisk(Generation::Seven);
    const std::string out = file("x.reg", "as it was");
    rlimit limit{};
    ASSERT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &limit));
    const rlimit small{4096, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &small));
    const Outcome outcome = onDisk({"--user", "jgross", "--export", out});
    ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &limit));
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(2, outcome.status);
    EXPECT_EQ(said({out + ": cannot be written: File too large"}), behindHives(outcome.err));
    EXPECT_EQ("as it was", read("x.reg"));
    EXPECT_FALSE(std::filesystem::exists(out + ".part"));
}

TEST_F(Export, StandardOutputTakesThemToo) {
    makeDisk(Generation::Seven);
    const std::string key = "HKEY_LOCAL_MACHINE\\System\\CurrentControlSet";
    ASSERT_EQ(0, onDisk({"--user", "jgross", "--export", path("x.reg"), key}).status);
    const Outcome outcome = onDisk({"--user", "jgross", "--export", "-", key});
    EXPECT_EQ(0, outcome.status);
    EXPECT_TRUE(read("x.reg") == outcome.out);
    const std::string command = "'" BROMVALE_OFFLINE_TOOL "' --windows '" + disk().string() +
                                "' --user jgross --export - >/dev/full 2>'" + path("err") + "'";
    const int status = std::system(command.c_str());
    EXPECT_EQ(2, WEXITSTATUS(status));
    EXPECT_EQ(said({"standard output cannot be written: No space left on device"}), behindHives(read("err")));
}

}  // namespace
}  // namespace bromvale::testing
