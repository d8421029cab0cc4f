// What the tool says of a removal and of the way back, word for word.
#include <sys/resource.h>

#include <csignal>

#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;

class ToldOfRemoval : public RescueTest {
  protected:
    ToldOfRemoval() : made_(makeDisk(Generation::Seven)) {
        hives_ = {made_.software.string(), made_.users[0].classes.string(), made_.users[1].classes.string()};
        windows_ = "Windows 7 Professional Service Pack 1, 6.1.7601, 32-bit in " + made_.windows.string();
    }
    // With the hives' lines and what clears the progress left out.
    Outcome removing(const std::string& rows, std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"--user", "all", "--remove", rows});
        Outcome outcome = onDisk(more);
        outcome.err = behindHives(outcome.err);
        return outcome;
    }
    Outcome removingAtTerminal(const std::string& answer) {
        Outcome outcome = onDiskAtTerminal({"--user", "all", "--remove", "all", "--write"}, answer);
        outcome.err.erase(0, outcome.err.rfind('\r') + 1);
        return outcome;
    }
    static std::string classOf(const std::string& user, const char* sign) {
        return "  HKEY_USERS\\S-1-5-21-1-2-3-" + user +
               "_Classes\\CLSID\\{00000000-0000-0000-0000-00000000000" + sign + "}";
    }
    void cleanAll() { ASSERT_EQ(0, removing("all", {"--write", "--yes", "6"}).status); }
    // Its bytes then.
    [[nodiscard]] std::string changeSoftware() const {
        std::string bytes = read("disk/Windows/System32/config/SOFTWARE") + "x";
        offline::writeFile(hives_[0], bytes);
        return bytes;
    }
    // In the list of the first hive.
    void setState(const std::string& state) const {
        const std::string list = hives_[0] + mark_ + ".list";
        std::string text = read(std::filesystem::relative(list, folder()).string());
        const std::size_t at = text.find("state: ");
        offline::writeFile(list, text.replace(at, text.find('\n', at) - at, "state: " + state));
    }
    [[nodiscard]] std::string listed(const std::string& first, const std::string& second,
                                     const std::string& third) const {
        return stamp_ + "\n  " + hives_[0] + first + "\n  " + hives_[1] + second + "\n  " + hives_[2] +
               third + "\n";
    }
    // The stamp and the first hive.
    std::string firstOfList() {
        const std::string list = onDisk({"--undo", "list"}).out;
        return list.substr(0, list.find('\n', list.find('\n') + 1));
    }
    offline::MadeDisk made_;
    std::vector<std::string> hives_;
    std::string windows_;
    const std::string stamp_ = "2026-11-15_07-12-09";
    const std::string mark_ = ".bromvale-" + stamp_;
    const std::string can_ = ": 2 keys, can be undone";
};

TEST_F(ToldOfRemoval, WhatGoes) {
    const Outcome some = removing("1-2, 3 5-6");
    EXPECT_EQ(0, some.status);
    EXPECT_EQ(hives_[0] +
                  "\n  HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000002}\\"
                  "InprocServer32\n" +
                  hives_[1] + "\n" + classOf("1001", "D") + " and 1 below it\n" + hives_[2] + "\n" +
                  classOf("1002", "E") + " and 1 below it\n",
              some.out);
    EXPECT_EQ(said({"5 keys go", "nothing was written; --write takes them out"}), some.err);
}

TEST_F(ToldOfRemoval, WhatStays) {
    const Outcome none = removing("2");
    EXPECT_EQ(0, none.status);
    EXPECT_EQ("", none.out);
    EXPECT_EQ(said({"1 of the rows are of keys with others below them that were not chosen; they stay",
                    "nothing goes"}),
              none.err);
}

// A registry file that is read beside the disk.
TEST_F(ToldOfRemoval, WhatIsInNoHiveStays) {
    const std::string paths =
        "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
    const std::string keys = paths + "a]\n@=\"C:\\\\Da\\\\da.dll\"\n" + paths + "b]\n@=\"C:\\\\weg.exe\"\n" +
                             paths + "c]\n@=\"C:\\\\Da\\\\da.dll\"\n";
    const Outcome outcome = removing("all", {"--registry", registry("b.reg", keys)});
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ(said({"1 of the rows are of keys that are in no raw hive; they stay", "6 keys go",
                    "nothing was written; --write takes them out"}),
              outcome.err);
}

TEST_F(ToldOfRemoval, WhoHasToAgree) {
    const std::string before = everythingOnDisk();
    const Outcome one = removing("1", {"--write"});
    EXPECT_EQ(4, one.status);
    EXPECT_EQ(hives_[1] + "\n" + classOf("1001", "D") + "\\InprocServer32\n", one.out);
    EXPECT_EQ(said({"1 key goes", "there is no terminal to ask at; --yes 1 agrees"}), one.err);
    const Outcome wrong = removing("all", {"--write", "--yes", "7"});
    EXPECT_EQ(4, wrong.status);
    EXPECT_EQ(said({"6 keys go", "6 keys would go, not 7; nothing was written"}), wrong.err);
    const std::string question =
        said({"6 keys go"}) + "6 keys go. Type their number to take them out, anything else to leave them: ";
    for (const char* const answer : {"", "ja", "7", "66"}) {
        const Outcome no = removingAtTerminal(answer);
        EXPECT_EQ(4, no.status) << answer;
        EXPECT_EQ(question + said({"nothing was written"}), no.err);
    }
    EXPECT_EQ(before, everythingOnDisk());
    const Outcome yes = removingAtTerminal("6");
    EXPECT_EQ(0, yes.status);
    std::vector<std::string> lines;
    for (const std::string& hive : hives_)
        lines.insert(lines.end(), {hive + ": Copied to " + hive + mark_, hive + ": The hive is clean",
                                   hive + ": 2 keys taken out", hive + ": Proved by two readers"});
    for (const std::string& hive : hives_) lines.push_back(hive + ": Cleaned: 2 keys");
    for (const std::string& hive : hives_)
        lines.insert(lines.end(), {"  the hive as it was: " + hive + mark_,
                                   "  the keys as a registry file: " + hive + mark_ + ".reg"});
    EXPECT_EQ(question + said(lines), yes.err);
}

TEST_F(ToldOfRemoval, WhatTheListHas) {
    const Outcome none = onDisk({"--undo", "list"});
    EXPECT_EQ(0, none.status);
    EXPECT_EQ("", none.out);
    EXPECT_EQ(said({"there is no cleaning here"}), none.err);
    cleanAll();
    EXPECT_EQ(listed(can_, can_, can_), onDisk({"--undo", "list"}).out);
    const Outcome part = run({"--hive", "HKEY_LOCAL_MACHINE\\Software=" + hives_[0], "--undo", "list"});
    EXPECT_EQ(stamp_ + "\n  " + hives_[0] + can_ + "\n  2 more hives of it lie elsewhere\n", part.out);
    EXPECT_EQ("", part.err);
    static_cast<void>(changeSoftware());
    offline::writeFile(hives_[1] + mark_, "damaged");
    EXPECT_EQ(listed(can_ + "; the hive was changed since", can_ + "; its copies are damaged", can_),
              onDisk({"--undo", "list"}).out);
    const Outcome refused = onDisk({"--undo", stamp_});
    EXPECT_EQ(4, refused.status);
    EXPECT_EQ(
        said({hives_[0] + ": The hive was changed since, by Windows, by a later cleaning or by hand. What "
                          "Windows or another program has written since would be lost with it, programs "
                          "installed since "
                          "among it. Use the .reg file of the complete copy to bring single keys back; or "
                          "force it if the "
                          "old state is worth more.",
              hives_[1] + ": The copies of hive and logs are not what the list says of them. The old state "
                          "would not come back byte for byte. Look for another copy; the .reg file of the "
                          "complete copy "
                          "holds the keys.",
              "nothing was written"}),
        refused.err);
    offline::writeFile(hives_[2] + mark_ + ".list", "x");
    const Outcome unreadable = onDisk({"--undo", "list"});
    EXPECT_EQ(0, unreadable.status);
    EXPECT_EQ(said({hives_[2] + mark_ + ".list: the list can't be read"}), unreadable.err);
    EXPECT_TRUE(unreadable.out.ends_with("\n  1 more hives of it lie elsewhere\n")) << unreadable.out;
}

TEST_F(ToldOfRemoval, HowAnUndoEnds) {
    cleanAll();
    const Outcome done = onDisk({"--undo", stamp_});
    EXPECT_EQ(0, done.status);
    const std::string back = ": Hive and logs are back, byte for byte as they were";
    EXPECT_EQ(said({hives_[0] + back, hives_[1] + back, hives_[2] + back}), done.err);
    const std::string undone = ": 2 keys, was undone";
    EXPECT_EQ(listed(undone, undone, undone), onDisk({"--undo", "list"}).out);
    const Outcome again = onDisk({"--undo", stamp_});
    EXPECT_EQ(4, again.status);
    EXPECT_EQ(said({"The cleaning " + stamp_ +
                        " is undone. The old state was put back already. There is nothing left to do.",
                    "nothing was written"}),
              again.err);
    const Outcome other = onDisk({"--undo", "2026"});
    EXPECT_EQ(4, other.status);
    EXPECT_EQ(
        said({"There is no cleaning \"2026\" that could be undone. There is nothing to put back. Have the "
              "cleanings listed.",
              "nothing was written"}),
        other.err);
}

TEST_F(ToldOfRemoval, WhatAForcedUndoKeeps) {
    cleanAll();
    const std::string changed = changeSoftware();
    const Outcome done = onDisk({"--undo", stamp_, "--force"});
    EXPECT_EQ(0, done.status);
    EXPECT_TRUE(done.err.ends_with("\n" + said({"  the hive as it was: " + hives_[0] + mark_ + ".aside"})))
        << done.err;
    EXPECT_TRUE(changed == read("disk/Windows/System32/config/SOFTWARE" + mark_ + ".aside"));
}

TEST_F(ToldOfRemoval, WhatStateTheListTells) {
    cleanAll();
    const std::pair<const char*, std::string> states[] = {
        {"begun", "was broken off"},
        {"ready", "was broken off"},
        {"undoing", "was broken off; the hive was changed since"},
        {"abandoned", "was given up: something else changed the hive"}};
    for (const auto& [state, text] : states) {
        setState(state);
        EXPECT_EQ(listed(": 2 keys, " + text, can_, can_), onDisk({"--undo", "list"}).out) << state;
    }
}

TEST_F(ToldOfRemoval, WhatWasBrokenOffGoesOnWithWrite) {
    cleanAll();
    setState("ready");
    const std::string broken =
        "the cleaning " + stamp_ +
        " was broken off: A cleaning was stopped after the first new hive had taken its "
        "place. The others follow, and the old logs are moved aside.";
    EXPECT_TRUE(onDisk({"--user", "all"}).err.starts_with(said({broken, windows_}))) << "without --write";
    EXPECT_EQ(stamp_ + "\n  " + hives_[0] + ": 2 keys, was broken off", firstOfList());
    offline::writeFile(disk() / "hiberfil.sys", "hibr" + std::string(8192, '\0'));
    const Outcome sleeps = removing("all", {"--write"});
    EXPECT_EQ(4, sleeps.status);
    EXPECT_EQ(said({broken,
                    "this Windows is hibernated, or may be, and would write its own over it; start it and "
                    "shut it down fully"}),
              sleeps.err);
    std::filesystem::remove(disk() / "hiberfil.sys");
    EXPECT_TRUE(onDisk({"--user", "all", "--remove", "all", "--write"})
                    .err.starts_with(said({broken, hives_[0] + ": Cleaned: 2 keys", windows_})));
    EXPECT_EQ(stamp_ + "\n  " + hives_[0] + can_, firstOfList());
}

TEST_F(ToldOfRemoval, WhatWasHardlyBegunIsTakenBack) {
    const std::string half = hives_[0] + ".bromvale-2026.list.new";
    offline::writeFile(half, "half");
    EXPECT_TRUE(
        onDisk({"--user", "all", "--remove", "1", "--write"})
            .err.starts_with(said({"the cleaning 2026 was broken off: The program was stopped while it "
                                   "wrote a list, and had done nothing else. The half list is removed.",
                                   "it is taken back; everything is as it was before it", windows_})));
    EXPECT_FALSE(std::filesystem::exists(half));
}

// No file takes more than its first sector.
TEST_F(ToldOfRemoval, ADiskThatTakesNoMore) {
    const std::string before = read("disk/Windows/System32/config/SOFTWARE");
    rlimit limit{};
    ASSERT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &limit));
    const rlimit small{4096, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &small));
    const Outcome outcome = removing("all", {"--write", "--yes", "6"});
    ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &limit));
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ(said({"6 keys go", hives_[0] + ": Taken back: hive and logs are as they were",
                    "write \"SOFTWARE" + mark_ + "\": File too large", "everything is as it was"}),
              outcome.err);
    EXPECT_TRUE(before == read("disk/Windows/System32/config/SOFTWARE"));
}

}  // namespace
}  // namespace bromvale::testing
