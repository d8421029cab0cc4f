// Programs whose names, commands or keys hold characters that the code page lacks. A command that is started
// shows in no box, so the refusals are told by their boxes and by what is left of the registry.
#include "tests/uninstall/programs_fixture.h"

namespace bromvale::testing {
namespace {

const std::u16string kKey = u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";

class ExactPrograms : public ProgramsTest {
  protected:
    void program(const std::u16string& key, const std::u16string& name, const std::u16string& command) {
        setString(HKEY_LOCAL_MACHINE, kKey + key, u"DisplayName", name);
        setString(HKEY_LOCAL_MACHINE, kKey + key, u"UninstallString", command);
    }
    Texts uninstallAll() {
        openPage();
        std::vector<int> all;
        for (int row = 1; row <= list().count(); ++row) all.push_back(row);
        list().userSelect(all);
        form().programs.cmdDeinstall_Click();
        return asked();
    }
    bool isThere(const std::u16string& key) { return keyExists(HKEY_LOCAL_MACHINE, kKey + key); }
};

TEST_F(ExactPrograms, ANameIsShownAsTheCodePageHasItAndCommandAndKeyStayTrue) {
    program(u"a\u0142", u"\u0141\u00F3d\u017A", u"C:\\W\u0141\\weg.exe");
    openPage();
    EXPECT_EQ(rows(), Texts{"Lódz | C:\\W\x1A"
                            "00321\\weg.exe | -2147483646 | Software\\Microsoft\\Windows\\"
                            "CurrentVersion\\Uninstall\\a\x1A"
                            "00322]"});
}

TEST_F(ExactPrograms, TwinsOfOneAnsiNameHaveTheirOwnCommands) {
    program(u"lap", u"Eins", u"C:\\1.exe");
    program(u"\u0142ap", u"Zwei", u"C:\\2.exe");
    openPage();
    Texts commands;
    for (int row = 1; row <= list().count(); ++row)
        commands.push_back(list().item(row).text() + " " + list().item(row).column(kUninstallCommand));
    std::sort(commands.begin(), commands.end());
    EXPECT_EQ(commands, (Texts{"Eins C:\\1.exe", "Zwei C:\\2.exe"}));
}

TEST_F(ExactPrograms, ACommandOfSuchATextIsNeitherStartedNorItsEntryOffered) {
    program(u"a", u"Alpha", u"\"C:\\W\u0141\u00F3d\u017A\\weg.exe\" /x");
    answer(IDOK);
    answer(IDYES);
    EXPECT_EQ(
        uninstallAll(),
        Texts{"Das Programm Alpha kann von hier aus nicht deinstalliert werden, da sein "
              "Deinstallationsaufruf\r\"C:\\WLódz\\weg.exe\" /x\rZeichen enthält, die nicht dargestellt "
              "werden können. Verwenden Sie bitte die Windows Systemsteuerung."});
    EXPECT_TRUE(isThere(u"a"));
}

TEST_F(ExactPrograms, TheNextProgramIsOfferedAllTheSame) {
    program(u"a", u"Alpha", u"C:\\W\u0141\\weg.exe");
    program(u"b", u"Beta", u"C:\\Fehlt\\weg.exe");
    answer(IDOK);
    answer(IDYES);
    answer(IDYES);
    EXPECT_EQ(uninstallAll().size(), 3u);
    EXPECT_TRUE(isThere(u"a"));
    EXPECT_FALSE(isThere(u"b"));
}

TEST_F(ExactPrograms, AnEntryWhoseKeyHasSuchANameStaysAndSoDoesItsTwin) {
    program(u"\u0142ap", u"Alpha", u"C:\\Fehlt\\weg.exe");
    setString(HKEY_LOCAL_MACHINE, kKey + u"lap", u"x", u"Zwilling");
    answer(IDYES);
    answer(IDOK);
    EXPECT_EQ(
        uninstallAll(),
        (Texts{"Wollen Sie das Programm Alpha wirklich deinstallieren?",
               "Das Deinstallationsprogramm von Alpha fehlt. Der Eintrag wird nicht entfernt, da der "
               "Name seines Schlüssels\r[Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\lap]\r"
               "Zeichen enthält, die nicht dargestellt werden können. Verwenden Sie bitte die Windows "
               "Systemsteuerung."}));
    EXPECT_TRUE(isThere(u"\u0142ap"));
    EXPECT_TRUE(isThere(u"lap"));
}

TEST_F(ExactPrograms, TheLogNamesWhatIsLeftAlone) {
    switchTracingOn();
    program(u"a", u"Alpha", u"C:\\W\u0141\\weg.exe");
    answer(IDOK);
    static_cast<void>(uninstallAll());
    EXPECT_EQ(logOf("cmdDeinstall_Click"),
              (Texts{"started; 0; ", "Alpha bleibt unberührt: C:\\WL\\weg.exe; 0; ", "endet; 0; "}));
}

}  // namespace
}  // namespace bromvale::testing
