// What the tests of the starter begin with.
#pragma once
#include "starter/texts.h"
#include "tests/starter/fake_machine.h"

namespace bromvale::starter {

inline constexpr const char* kSettingsFile = "Einstellungen.reg";

inline Place settings() {
    return {Hive::User, View::Bits32, u"Software\\Bromvale"};
}
inline Place journal(std::u16string_view below = {}) {
    return {Hive::User, View::Bits32, std::u16string(u"Software\\Bromvale-Portable").append(below)};
}
inline Place classes(Hive hive, View view, std::u16string_view below = {}) {
    return {hive, view, std::u16string(u"Software\\Classes\\CLSID").append(below)};
}
inline constexpr std::u16string_view kTimer = u"\\{71A27032-C7D8-11D2-BEF8-525400DFB47A}";
inline constexpr std::u16string_view kImages = u"\\{396F7AC9-A0DD-11D3-93EC-00C0DFE7442A}";

// Settings of an installed program, among them what only an exact copy brings back.
inline std::vector<Value> ownValues() {
    return {textValue(u"AutoScan", u"0"),
            {u"1stRun", kTextType, std::string("0\0", 2)},
            {u"EMail", kTextType, toUtf16Bytes(u"\u0142@b.de")},
            {u"Fremd", 4, std::string("\1\0\0\0", 4)},
            {u"\u4e2d", 3, {}}};
}

// A settings file as the starter writes it.
inline std::string fileText(std::string_view values) {
    return "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Bromvale]\r\n" + std::string(values) +
           "\r\n; Ende\r\n";
}
inline const std::string kOldFile = fileText("\"AutoScan\"=\"1\"\r\n\"EMail\"=\"a@b.de\"\r\n");
inline const std::string kNewFile =
    fileText("\"AutoScan\"=\"0\"\r\n\"EMail\"=\"a@b.de\"\r\n\"ScreenX\"=\"15\"\r\n");

// The program stores two settings; the key is made where it is missing.
inline void changeSettings(FakeMachine& machine) {
    machine.put(settings(),
                {textValue(u"AutoScan", u"0"), textValue(u"EMail", u"a@b.de"), textValue(u"ScreenX", u"15")});
}

// A 64-bit machine with an installed program's settings; no class is registered, and of the user's keys not
// even the one above them is there. The folder has been in use.
inline FakeMachine usedMachine() {
    FakeMachine machine;
    machine.put({Hive::Machine, View::Bits64, u"Software"});
    machine.put({Hive::Machine, View::Bits64, u"Software\\Classes"});
    machine.put(classes(Hive::Machine, View::Bits64));
    machine.put({Hive::User, View::Bits32, u"Software"});
    machine.put({Hive::User, View::Bits64, u"Software"});
    machine.put({Hive::User, View::Bits64, u"Software\\Classes"});
    machine.put(settings(), ownValues());
    machine.put({Hive::User, View::Bits32, u"Software\\Bromvale\\Unten"}, {textValue(u"bleibt", u"da")});
    machine.files[kSettingsFile] = kOldFile;
    return machine;
}

// Nothing of ours was ever there, on either side.
inline FakeMachine newMachine() {
    FakeMachine machine = usedMachine();
    machine.registry.erase({Hive::User, View::Bits32, u"Software\\Bromvale\\Unten"});
    machine.registry.erase({Hive::User, View::Bits32, u"Software\\Bromvale"});
    machine.files.clear();
    return machine;
}

}  // namespace bromvale::starter
