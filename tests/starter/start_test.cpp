#include "starter/start.h"

#include <gtest/gtest.h>

#include "starter/components.h"
#include "tests/starter/samples.h"

namespace bromvale::starter {
namespace {

TEST(Start, TheProgramSeesTheFoldersSettingsAndEachClass) {
    FakeMachine machine = usedMachine();
    int seen = 0;
    machine.program = [&](FakeMachine& now) {
        EXPECT_EQ((std::vector{textValue(u"AutoScan", u"1"), textValue(u"EMail", u"a@b.de")}),
                  now.find(settings())->values);
        for (const Component& component : components()) {
            const auto* const key = now.find({Hive::Machine, View::Bits64, component.path});
            ASSERT_NE(nullptr, key);
            EXPECT_EQ(std::vector{textValue({}, component.name)}, key->values);
            ++seen;
        }
    };
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(7, seen);
}

TEST(Start, AfterwardsTheRegistryIsAsItWasAndTheFolderHasTheSettings) {
    for (FakeMachine machine : {usedMachine(), newMachine()}) {
        const FakeMachine::Registry before = machine.registry;
        machine.program = changeSettings;
        EXPECT_TRUE(start(machine));
        EXPECT_EQ(before, machine.registry);
        EXPECT_EQ((FakeMachine::Files{{kSettingsFile, kNewFile}}), machine.files);
        EXPECT_TRUE(machine.told.empty());
    }
}

TEST(Start, WithoutRightsTheClassesAreTheUsersOwn) {
    FakeMachine machine = usedMachine();
    const FakeMachine::Registry before = machine.registry;
    machine.isAdministrator = false;
    machine.program = [](FakeMachine& now) {
        EXPECT_EQ(nullptr, now.find(classes(Hive::Machine, View::Bits64, kTimer)));
        EXPECT_NE(nullptr, now.find(classes(Hive::User, View::Bits64, kTimer)));
        EXPECT_EQ(nullptr, now.find(classes(Hive::User, View::Bits32, kTimer)));
    };
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(before, machine.registry);
}

TEST(Start, OnA32BitMachineThereIsOneView) {
    FakeMachine machine = newMachine();
    machine.is64Bit = false;
    machine.program = [](FakeMachine& now) {
        EXPECT_NE(nullptr, now.find(classes(Hive::Machine, View::Bits32, kTimer)));
    };
    const FakeMachine::Registry before = machine.registry;
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(before, machine.registry);
}

TEST(Start, AClassThatIsThereIsLeftAlone) {
    FakeMachine machine = usedMachine();
    machine.put(classes(Hive::Machine, View::Bits64, kTimer), {textValue({}, u"Von jemand anderem")});
    machine.put(classes(Hive::User, View::Bits64));
    machine.put(classes(Hive::User, View::Bits64, kImages));
    const FakeMachine::Registry before = machine.registry;
    machine.program = [](FakeMachine& now) {
        EXPECT_EQ(nullptr, now.find(classes(Hive::Machine, View::Bits64, kImages)));
    };
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(before, machine.registry);
}

TEST(Start, AClassThatOthersHaveChangedStays) {
    FakeMachine machine = usedMachine();
    const Place below = classes(Hive::Machine, View::Bits64, std::u16string(kImages) + u"\\InprocServer32");
    machine.program = [&](FakeMachine& now) {
        now.put(classes(Hive::Machine, View::Bits64, kTimer), {textValue({}, u"Anders registriert")});
        now.put(below, {textValue({}, u"C:\\y.ocx")});
    };
    FakeMachine::Registry expected = machine.registry;
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(u"Anders registriert",
              textOf({Found::Yes, machine.find(classes(Hive::Machine, View::Bits64, kTimer))->values}, {}));
    EXPECT_NE(nullptr, machine.find(below));
    EXPECT_EQ(expected.size() + 3, machine.registry.size());
}

TEST(Start, ASecondStarterSaysSoAndChangesNothing) {
    FakeMachine machine = usedMachine();
    machine.otherStarter = true;
    EXPECT_FALSE(start(machine));
    EXPECT_EQ(0, machine.changes);
    EXPECT_EQ(
        std::vector<std::string>{
            "Bromvale wurde auf diesem Rechner schon von einem Datenträger gestartet. Beenden Sie "
            "es zuerst und warten Sie einen Augenblick."},
        machine.told);
}

TEST(Start, ARunningProgramIsToldAndNothingChanges) {
    FakeMachine machine = usedMachine();
    machine.otherProgram = true;
    EXPECT_FALSE(start(machine));
    EXPECT_EQ(0, machine.changes);
    EXPECT_EQ(
        std::vector<std::string>{
            "Bromvale läuft schon. Beenden Sie es zuerst, und starten Sie es dann von hier."},
        machine.told);
}

TEST(Start, AMissingProgramIsToldAndNothingChanges) {
    FakeMachine machine = usedMachine();
    machine.lacksProgram = true;
    EXPECT_FALSE(start(machine));
    EXPECT_EQ(0, machine.changes);
    ASSERT_EQ(1u, machine.told.size());
    EXPECT_NE(std::string::npos, machine.told[0].find("64\\Bromvale.exe"));
}

TEST(Start, SettingsThatCantBeReadAreToldAndNothingChanges) {
    FakeMachine machine = usedMachine();
    machine.files[kSettingsFile] =
        "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Bromvale]\r\n\"a\"=\"b\"\r\n";
    EXPECT_FALSE(start(machine));
    EXPECT_EQ(0, machine.changes);
    ASSERT_EQ(1u, machine.told.size());
    EXPECT_NE(
        std::string::npos,
        machine.told[0].find("Der Schlüssel HKEY_LOCAL_MACHINE\\Software\\Bromvale gehört nicht hinein."));
}

TEST(Start, AFolderThatCantBeWrittenIsAskedAbout) {
    FakeMachine machine = usedMachine();
    machine.isWritable = false;
    EXPECT_FALSE(start(machine));
    EXPECT_EQ(0, machine.changes);
    EXPECT_EQ(1u, machine.told.size());
    EXPECT_EQ(0, machine.starts);
}

TEST(Start, AFolderThatCantBeWrittenKeepsItsSettings) {
    FakeMachine machine = usedMachine();
    const FakeMachine::Registry before = machine.registry;
    machine.isWritable = false;
    machine.answer = Answer::Yes;
    machine.program = changeSettings;
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(1, machine.starts);
    EXPECT_EQ(1u, machine.told.size());
    EXPECT_EQ(before, machine.registry);
    EXPECT_EQ((FakeMachine::Files{{kSettingsFile, kOldFile}}), machine.files);
}

TEST(Start, AFolderThatIsGoneAtTheEndLeavesTheMachineAsItWas) {
    FakeMachine machine = usedMachine();
    const FakeMachine::Registry before = machine.registry;
    machine.program = [](FakeMachine& now) {
        changeSettings(now);
        now.isWritable = false;
    };
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(1u, machine.told.size());
    EXPECT_EQ(before, machine.registry);
    EXPECT_EQ(kOldFile, machine.files[kSettingsFile]);
}

// Whatever the system calls it: the stick has been pulled, and nothing of it can be read or written.
FakeMachine machineWhoseFolderGoes(Found without) {
    FakeMachine machine = usedMachine();
    machine.program = [without](FakeMachine& now) {
        changeSettings(now);
        now.without = without;
    };
    return machine;
}

TEST(Start, AStickThatIsPulledIsAskedForBeforeTheChangesAreGivenUp) {
    for (const Found without : {Found::No, Found::Unknown}) {
        FakeMachine machine = machineWhoseFolderGoes(without);
        const FakeMachine::Registry before = machine.registry;
        EXPECT_TRUE(start(machine));
        ASSERT_EQ(1u, machine.told.size());
        EXPECT_NE(std::string::npos, machine.told[0].find("Ist der Datenträger noch da"));
        EXPECT_EQ(before, machine.registry);
        EXPECT_EQ(kOldFile, machine.files[kSettingsFile]);
    }
}

TEST(Start, AStickThatComesBackGetsTheChanges) {
    for (const Found without : {Found::No, Found::Unknown}) {
        FakeMachine machine = machineWhoseFolderGoes(without);
        const FakeMachine::Registry before = machine.registry;
        machine.answer = Answer::Yes;
        machine.atQuestion = [](FakeMachine& now) { now.without = Found::Yes; };
        EXPECT_TRUE(start(machine));
        EXPECT_EQ(1u, machine.told.size());
        EXPECT_EQ(before, machine.registry);
        EXPECT_EQ((FakeMachine::Files{{kSettingsFile, kNewFile}}), machine.files);
    }
}

TEST(Start, AnotherStickInItsPlaceGetsNothing) {
    FakeMachine machine = usedMachine();
    const FakeMachine::Registry before = machine.registry;
    const FakeMachine::Files others{{kSettingsFile, fileText("\"EMail\"=\"anderer@b.de\"\r\n")},
                                    {"Einstellungen.lauf", "andere"}};
    machine.program = [&](FakeMachine& now) {
        changeSettings(now);
        now.files = others;
    };
    int questions = 0;
    machine.answer = Answer::Yes;
    machine.atQuestion = [&](FakeMachine& now) {
        if (++questions == 3) now.answer = Answer::No;
    };
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(3, questions);
    EXPECT_EQ(before, machine.registry);
    EXPECT_EQ(others.at(kSettingsFile), machine.files[kSettingsFile]);
}

TEST(Start, ASessionThatEndsWithoutTheStickKeepsTheChangesForTheNextStart) {
    FakeMachine machine = machineWhoseFolderGoes(Found::No);
    const FakeMachine::Registry before = machine.registry;
    machine.sessionEnds = true;
    machine.answer = Answer::None;
    EXPECT_THROW(start(machine), Killed);
    machine.without = Found::Yes;
    machine.sessionEnds = false;
    machine.program = [](FakeMachine&) {};
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(before, machine.registry);
    EXPECT_EQ(kNewFile, machine.files[kSettingsFile]);
}

TEST(Start, ASessionThatEndsSavesAndPutsBack) {
    FakeMachine machine = usedMachine();
    const FakeMachine::Registry before = machine.registry;
    machine.program = changeSettings;
    machine.sessionEnds = true;
    EXPECT_THROW(start(machine), Killed);
    EXPECT_EQ(before, machine.registry);
    EXPECT_EQ(kNewFile, machine.files[kSettingsFile]);
}

TEST(Start, AProgramThatOutlivesTheSessionIsMendedByTheNextStart) {
    FakeMachine machine = usedMachine();
    const FakeMachine::Registry before = machine.registry;
    machine.program = changeSettings;
    machine.sessionEnds = machine.programOutlivesSession = true;
    EXPECT_THROW(start(machine), Killed);
    EXPECT_NE(nullptr, machine.find(journal()));
    machine.sessionEnds = machine.otherProgram = false;
    machine.program = [](FakeMachine&) {};
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(before, machine.registry);
    EXPECT_EQ(kNewFile, machine.files[kSettingsFile]);
}

Place entry(Hive hive) {
    return {hive, View::Bits64, u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Bromvale"};
}

// The starter is killed, Bromvale is installed, which finds all classes, and the stick is started again.
TEST(Start, AnInstallationThatCameAfterAKilledStartKeepsTheClassesItCountsOn) {
    for (const bool isAdministrator : {true, false}) {
        FakeMachine machine = usedMachine();
        machine.isAdministrator = isAdministrator;
        machine.program = [](FakeMachine&) { throw Killed(); };
        EXPECT_THROW(start(machine), Killed);
        const Hive hive = isAdministrator ? Hive::Machine : Hive::User;
        machine.put(entry(hive), {textValue(u"InstallLocation", u"C:\\Program Files\\Bromvale")});
        machine.program = [](FakeMachine&) {};
        EXPECT_TRUE(start(machine));
        EXPECT_EQ(nullptr, machine.find(journal()));
        const Key program = machine.readKey(entry(hive));
        for (const Component& component : components()) {
            EXPECT_NE(nullptr, machine.find({hive, View::Bits64, component.path}));
            const std::u16string id = component.path.substr(component.path.rfind(u'\\') + 1);
            EXPECT_EQ(component.name, textOf(program, id)) << "so that its removal takes it back";
        }
    }
}

TEST(Start, AnInstallationElsewhereOrOneThatIsWholeGetsNothing) {
    FakeMachine machine = usedMachine();
    machine.put(entry(Hive::User), {textValue(u"InstallLocation", u"C:\\Bromvale")});
    machine.put(entry(Hive::Machine), {textValue(u"DisplayName", u"Bromvale")});
    const FakeMachine::Registry before = machine.registry;
    machine.program = [](FakeMachine&) { throw Killed(); };
    EXPECT_THROW(start(machine), Killed);
    machine.program = [](FakeMachine&) {};
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(before, machine.registry);
}

// It lacked the classes before the run, and does so afterwards.
TEST(Start, ARunBesideAnInstallationLeavesItAsItIs) {
    FakeMachine machine = usedMachine();
    machine.put(entry(Hive::Machine), {textValue(u"InstallLocation", u"C:\\Bromvale")});
    const FakeMachine::Registry before = machine.registry;
    EXPECT_TRUE(start(machine));
    EXPECT_EQ(before, machine.registry);
}

TEST(Start, AJournalIsNoOrderToDelete) {
    FakeMachine machine = usedMachine();
    const Place other{Hive::Machine, View::Bits64, u"Software\\Fremd"};
    machine.put(other, {});
    machine.put(classes(Hive::Machine, View::Bits64, u"\\{0}"), {textValue({}, u"x")});
    const FakeMachine::Registry before = machine.registry;
    machine.put(journal(), {textValue(u"Stand", u"9")});
    machine.put(journal(u"\\Klassen"), {textValue(u"HKLM64\\Software\\Fremd", u""), textValue(u"", u"x"),
                                        textValue(u"HKLM64\\Software\\Classes\\CLSID\\{0}", u"x"),
                                        textValue(u"HKLM64\\Software", u""), textValue(u"HKXX\\a", u"")});
    EXPECT_TRUE(start(machine));
    // What no place belongs to is all that stays of it.
    machine.registry.erase({Hive::User, View::Bits32, u"Software\\Bromvale-Portable"});
    machine.registry.erase({Hive::User, View::Bits32, u"Software\\Bromvale-Portable\\Klassen"});
    EXPECT_EQ(before, machine.registry);
}

}  // namespace
}  // namespace bromvale::starter
