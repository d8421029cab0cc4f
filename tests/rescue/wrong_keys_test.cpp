// Keys that were not meant: of the other view, of another user, of a name that is nearly theirs.
#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;
using offline::keyAt;
using offline::MadeHive;
using offline::MadeKey;

class WrongKeys : public RescueTest {};

TEST_F(WrongKeys, SharedKeysLiveInEitherView) {
    const offline::MadeDisk made = makeDiskWith([](MadeHive& software) {
        addProgram(software, u"a.exe", u"C:\\bootmgr");
        addProgram(software, u"b.exe", u"C:\\Windows\\System32\\nur32.exe");
        addProgram(software, u"c.exe", u"C:\\Windows\\System32\\nur64.exe");
        addProgram(software, u"d.exe", u"C:\\Windows\\System32\\weg.exe");
        addProgram(software, u"e.exe", u"C:\\Windows\\Sysnative\\nur64.exe");
        addProgram(software, u"z.exe", u"C:\\bootmgr");
    });
    offline::writeFile(made.windows / "SysWOW64" / "nur32.exe", "x");
    offline::writeFile(made.config.parent_path() / "nur64.exe", "x");
    for (const char* const view : {"64", "32", "both"}) {
        SCOPED_TRACE(view);
        const auto rows = rowsOf({"--user", "all", "--view", view});
        ASSERT_EQ(1u, rows.size()) << (rows.empty() ? "" : rows[0]);
        EXPECT_NE(std::string::npos, rows[0].find("d.exe")) << rows[0];
    }
}

// The file of rows names a key: that alone goes, not its like in another view or of another user.
TEST_F(WrongKeys, AKeyThatStandsTwiceMustBeChosenByNumber) {
    makeDiskWith([](MadeHive& software) {
        for (const char16_t* const place : {u"Classes\\CLSID", u"Classes\\Wow6432Node\\CLSID"}) {
            MadeKey& clsid = keyAt(software.root, place);
            addClass(clsid, u"{00000000-0000-0000-0000-000000000001}", u"C:\\bootmgr");
            addClass(clsid, u"{00000000-0000-0000-0000-000000000002}", u"C:\\weg.dll");
            addClass(clsid, u"{00000000-0000-0000-0000-000000000003}", u"C:\\bootmgr");
        }
    });
    const std::string key =
        "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000002}";
    file("zeilen.txt", key + "\n" + key + "\\InprocServer32\n");
    const Outcome both = onDisk({"--user", "all", "--view", "both", "--remove", path("zeilen.txt")});
    EXPECT_EQ(2, both.status) << both.out;
    EXPECT_EQ(said({"several keys of the report, of views or users, are called " + key +
                    "; choose by the numbers of their rows"}),
              behindHives(both.err));
    const Outcome one = onDisk({"--user", "all", "--view", "32", "--remove", path("zeilen.txt")});
    EXPECT_EQ(0, one.status) << one.err;
    EXPECT_NE(std::string::npos, one.out.find("Wow6432Node")) << one.out << one.err;
}

TEST_F(WrongKeys, WhatStaysIsSaid) {
    makeDisk(Generation::Seven);
    const Outcome outcome = onDisk({"--user", "all", "--remove", "2"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.err.find("1 of the rows are of keys with others below them"))
        << outcome.err;
}

// Names as they come, with a live like of what the machine's code page can't hold.
TEST_F(WrongKeys, KeysWithOddNames) {
    const std::vector<std::u16string> dead{u"[c", u"d=e", u"f\"g\"", u"\u00FCber", u"i,j;k", u"}l{"};
    const std::vector<std::u16string> odd{u"\u0141ukasz", u"\u6F22", std::u16string(u"nul\0nul", 7),
                                          u"back\\slash", u"a]b",    u"two\nlines"};
    makeDiskWith([&](MadeHive& software) {
        addProgram(software, u"0", u"C:\\bootmgr");
        for (const std::u16string& name : dead) addProgram(software, name, u"C:\\weg.exe");
        for (const std::u16string& name : odd) {
            MadeKey key;
            key.name = name;
            key.values.push_back(offline::textValue(u"", u"C:\\weg.exe"));
            keyAt(software.root, u"Microsoft\\Windows\\CurrentVersion\\App Paths").subKeys.push_back(key);
        }
        addProgram(software, u"Lukasz", u"C:\\bootmgr");
        addProgram(software, u"?", u"C:\\bootmgr");
        addProgram(software, u"nul", u"C:\\bootmgr");
        addProgram(software, u"back", u"C:\\bootmgr");
        addProgram(software, u"zz", u"C:\\bootmgr");
    });
    const Outcome outcome = onDisk({"--user", "all", "--remove", "all"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    std::vector<std::string> going;
    for (const std::string& line : linesOf(outcome.out)) {
        if (line.starts_with("  ")) going.push_back(line.substr(line.rfind('\\') + 1));
    }
    const std::string umlaut = std::string("\xC3\xBC") + "ber";
    const std::vector<std::string> expected{"[c", "d=e", "f\"g\"", "i,j;k", "x0Alines", "}l{", umlaut};
    EXPECT_EQ(expected, going) << "no name is taken for another one's";
}

// What a user's own hive has below Software\Classes nobody sees on the living machine, where UsrClass.dat
// stands.
TEST_F(WrongKeys, ClassesOfAUserAreThoseOfTheirOwnHive) {
    offline::DiskPlan plan;
    plan.generation = Generation::Seven;
    const auto fill = [](MadeKey& clsid, std::u16string_view first, std::u16string_view second) {
        addClass(clsid, u"{00000000-0000-0000-0000-000000000001}", u"C:\\bootmgr");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000002}", first);
        if (!second.empty()) addClass(clsid, u"{00000000-0000-0000-0000-000000000003}", second);
        addClass(clsid, u"{00000000-0000-0000-0000-000000000004}", u"C:\\bootmgr");
    };
    plan.user = [&](MadeHive& user, std::size_t) {
        fill(keyAt(user.root, u"Software\\Classes\\CLSID"), u"C:\\weg.dll", u"C:\\weg.dll");
    };
    plan.classes = [&](MadeHive& classes, std::size_t) {
        fill(keyAt(classes.root, u"CLSID"), u"C:\\bootmgr", u"");
    };
    offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "bootmgr", "x");
    EXPECT_EQ(std::vector<std::string>{}, rowsOf({"--user", "all"}));
    plan.generation = Generation::Nt4;
    std::filesystem::remove_all(disk());
    offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "bootmgr", "x");
    EXPECT_EQ(8u, rowsOf({"--user", "all"}).size()) << "NT4 has them there";
}

// A link can't be told to be dead where what it may lead to was not read.
TEST_F(WrongKeys, LinksAreJudgedWithTheMachinesClassesAlone) {
    offline::DiskPlan plan;
    plan.generation = Generation::Seven;
    constexpr const char16_t* kLibrary = u"{AAAAAAAA-0000-0000-0000-000000000001}";
    plan.classes = [&](MadeHive& classes, std::size_t) {
        MadeKey& clsid = keyAt(classes.root, u"CLSID");
        for (const char16_t* const name :
             {u"{00000000-0000-0000-0000-000000000001}", u"{00000000-0000-0000-0000-000000000002}",
              u"{00000000-0000-0000-0000-000000000003}"}) {
            addClass(clsid, name, u"C:\\bootmgr");
            keyAt(clsid, std::u16string(name) + u"\\TypeLib")
                .values.push_back(offline::textValue(u"", kLibrary));
        }
    };
    const offline::MadeDisk made = offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "bootmgr", "x");
    EXPECT_NE(0u, rowsOf({"--user", "jgross"}).size());
    const Outcome alone =
        run({"--hive", "HKEY_CURRENT_USER\\Software\\Classes=" + made.users[0].classes.string(), "--drive",
             "C:=" + disk().string(), "--check"});
    EXPECT_EQ(0, alone.status) << alone.out;
    EXPECT_EQ(
        said({"links between classes are not judged: what they lead to may be in what was not read; give all "
              "hives"}),
        behindHives(alone.err));
}

}  // namespace
}  // namespace bromvale::testing
