#include "starter/settings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "starter/registry_text.h"
#include "tests/starter/samples.h"

namespace bromvale::starter {
namespace {

FolderSettings readFile(const std::string& bytes) {
    FakeMachine machine;
    machine.files[kSettingsFile] = bytes;
    return readFolderSettings(machine);
}

TEST(Settings, TextsOfTheKeyAreRead) {
    const FolderSettings settings = readFile(
        "REGEDIT4\n; ein "
        "Kommentar\n\n[hkey_current_user\\SOFTWARE\\bromvale]\n\"EMail\"=\"\\\"\\\\\xFC\"\n@=\"\"\n"
        "\"1stRun\"=hex(1):31\n\"Leer\"=hex(1):\n\"Lang\"=hex(1):41,\\\r\n  42,00");
    EXPECT_EQ("", settings.fault);
    EXPECT_EQ((std::vector<Value>{textValue(u"EMail", u"\"\\\u00FC"),
                                  textValue(u"", u""),
                                  {u"1stRun", kTextType, std::string("1\0", 2)},
                                  {u"Leer", kTextType, ""},
                                  textValue(u"Lang", u"AB")}),
              settings.values);
}

TEST(Settings, WithoutAFileThereAreNone) {
    FakeMachine machine;
    const FolderSettings settings = readFolderSettings(machine);
    EXPECT_EQ("", settings.fault);
    EXPECT_TRUE(settings.values.empty());
}

TEST(Settings, AWholeNewFileThatIsAloneIsRead) {
    FakeMachine machine;
    machine.files["Einstellungen.neu"] = kOldFile;
    EXPECT_EQ(2u, readFolderSettings(machine).values.size());
    for (std::size_t length = 0; length < kOldFile.size() - 2; ++length) {
        machine.files["Einstellungen.neu"] = kOldFile.substr(0, length);
        EXPECT_TRUE(readFolderSettings(machine).values.empty()) << length;
        EXPECT_EQ("", readFolderSettings(machine).fault) << length;
    }
}

struct Hostile {
    std::string bytes;
    std::size_t line;
};

TEST(Settings, AFileThatIsWrongAnywhereIsNotReadAtAll) {
    const std::string start = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Bromvale]\r\n\"gut\"=\"1\"\r\n";
    const std::vector<Hostile> cases{
        {"", 0},
        {"\r\n", 1},
        {"REGEDIT", 1},
        {"REGEDIT4 \r\n", 1},
        {"Windows Registry Editor Version 5.00\r\n", 1},
        {std::string("\xFF\xFEW\0i\0", 6), 1},
        {std::string("REGEDIT4\0\r\n", 11), 1},
        {"REGEDIT4\r\n\"a\"=\"b\"\r\n", 2},
        {"REGEDIT4\r\n[]\r\n", 2},
        {"REGEDIT4\r\n[-HKEY_CURRENT_USER\\Software\\Bromvale]\r\n", 2},
        {"REGEDIT4\r\n[HKEY_CURRENT_USER\\Software\\Bromvale\r\n", 2},
        {start + "[HKEY_CURRENT_USER\\Software\\BROMVALE]\r\n", 5},
        {start + "\"a\"=-\r\n", 5},
        {start + "\"a\"=dword:00000001\r\n", 5},
        {start + "\"a\"=hex:00\r\n", 5},
        {start + "\"a\"=hex(2):00\r\n", 5},
        {start + "\"a\"=hex(1):0\r\n", 5},
        {start + "\"a\"=hex(1):00,\r\n", 5},
        {start + "\"a\"=hex(1):00;00\r\n", 5},
        {start + "\"a\"=hex(1):-1\r\n", 5},
        {start + "\"a\"=hex(1):00,\\", 5},
        {start + "\"a\"=hex(1):00,\\\r\n\r\n", 6},
        {start + "\"a\"=hex(1):00,\\ 00\r\n", 5},
        {start + "\"a\"=\"b\r\n", 5},
        {start + "\"a\"=\"b\"c\r\n", 5},
        {start + "\"a\"=\"b\\n\"\r\n", 5},
        {start + "\"a\"=\"b\\\r\n", 5},
        {start + "\"a\" \"b\"\r\n", 5},
        {start + "\"a\r\n", 5},
        {start + "a=b\r\n", 5},
        {start + "\"GUT\"=\"2\"\r\n", 5},
        {start + "\"a\"=\"\tb\"\r\n", 5},
        {start + "\"a\"=\"\rb\"\r\n", 5},
        {start + std::string("\"a\"=\"\0\"\r\n", 9), 5},
        {start + "\"" + std::string(256, 'n') + "\"=\"\"\r\n", 5},
        {start + "\"a\"=\"" + std::string(4097, 't') + "\"\r\n", 5},
    };
    for (const Hostile& each : cases) {
        const RegistryText text = readRegistryText(each.bytes);
        ASSERT_TRUE(text.fault) << each.bytes;
        EXPECT_EQ(each.line, text.fault->line) << each.bytes;
        EXPECT_TRUE(text.keys.empty()) << each.bytes;
        EXPECT_NE("", readFile(each.bytes).fault) << each.bytes;
    }
}

TEST(Settings, TooManyValuesAreAFault) {
    std::string bytes = "REGEDIT4\r\n[HKEY_CURRENT_USER\\Software\\Bromvale]\r\n";
    for (int i = 0; i < 1000; ++i) bytes += '"' + std::to_string(i) + "\"=\"\"\r\n";
    EXPECT_EQ("", readFile(bytes).fault);
    EXPECT_EQ("Einstellungen.reg, Zeile 1003: Es sind zu viele Werte.",
              readFile(bytes + "\"x\"=\"\"\r\n").fault);
}

TEST(Settings, AnotherKeyIsAFault) {
    for (const char* key :
         {"HKEY_CURRENT_USER\\Software\\Bromvale\\Unten", "HKEY_CURRENT_USER\\Software",
          "HKEY_LOCAL_MACHINE\\Software\\Bromvale", "HKEY_CURRENT_USER\\Software\\\\Bromvale"}) {
        const FolderSettings settings = readFile(kOldFile + "[" + key + "]\r\n");
        EXPECT_EQ(std::string("Einstellungen.reg: Der Schlüssel ") + key + " gehört nicht hinein.",
                  settings.fault);
        EXPECT_TRUE(settings.values.empty());
    }
}

TEST(Settings, EachCutOfAFileIsReadAsAFaultOrAsTheLinesBeforeIt) {
    for (std::size_t length = 0; length < kOldFile.size(); ++length) {
        const FolderSettings settings = readFile(kOldFile.substr(0, length));
        EXPECT_LE(settings.values.size(), 2u);
        EXPECT_TRUE(settings.fault.empty() || settings.values.empty());
    }
}

TEST(Settings, WhatIsSavedIsReadAgain) {
    FakeMachine machine;
    machine.put(settings(), {textValue(u"EMail", u"\"\\\u00FC"),
                             {u"1stRun", kTextType, std::string("1\0", 2)},
                             {u"Leer", kTextType, ""},
                             textValue(u"Umbruch", u"a\r\nb")});
    EXPECT_TRUE(saveFolderSettings(machine));
    EXPECT_EQ(fileText("\"EMail\"=\"\\\"\\\\\xFC\"\r\n\"1stRun\"=hex(1):31\r\n\"Leer\"=hex(1):\r\n"
                       "\"Umbruch\"=hex(1):61,0d,0a,62,00\r\n"),
              machine.files[kSettingsFile]);
    EXPECT_EQ(machine.find(settings())->values, readFolderSettings(machine).values);
}

TEST(Settings, WhatIsNoTextAndANameWithALineBreakAreNotSaved) {
    FakeMachine machine;
    machine.put(settings(),
                {{u"Zahl", 4, std::string(4, '\0')}, textValue(u"a\nb", u"c"), textValue(u"gut", u"1")});
    EXPECT_TRUE(saveFolderSettings(machine));
    EXPECT_EQ(fileText("\"gut\"=\"1\"\r\n"), machine.files[kSettingsFile]);
}

// One odd value must not lock its user out of all others.
TEST(Settings, WhateverTheKeyHoldsItsFileIsReadAgain) {
    const Value good = textValue(u"gut", u"1");
    std::vector<std::vector<Value>> keys{
        {textValue(u"\u4e2d", u"1"), textValue(u"\u4e00", u"2")},
        {textValue(std::u16string(255, u'n'), u""), textValue(std::u16string(256, u'n'), u"")},
        {textValue(u"\"\\[]=;", u"\"\\[]=;"), textValue({}, u"")},
    };
    for (char16_t unit = 1; unit <= 0x100; ++unit) {
        const std::u16string text{u'a', unit};
        keys.push_back({textValue(text, text), textValue({unit}, text + u'b')});
    }
    for (const std::size_t length : {255u, 4095u, 4096u, 4097u, 70000u}) {
        keys.push_back({textValue(u"Text", std::u16string(length, u't'))});
        keys.push_back({textValue(u"Bytes", std::u16string(length, u'\n'))});
        keys.push_back({{u"Ende", kTextType, toUtf16Bytes(std::u16string(length, u'e'))}});
    }
    for (const std::size_t length : {1u, 30u, 4000u}) {
        keys.emplace_back();
        for (int i = 0; i < 1100; ++i)
            keys.back().push_back(textValue(widened(std::to_string(i)), std::u16string(length, u't')));
    }
    for (std::vector<Value>& values : keys) {
        values.insert(values.begin(), good);
        FakeMachine machine;
        machine.put(settings(), values);
        ASSERT_TRUE(saveFolderSettings(machine));
        const FolderSettings saved = readFolderSettings(machine);
        ASSERT_EQ("", saved.fault);
        ASSERT_FALSE(saved.values.empty());
        EXPECT_EQ(good, saved.values[0]);
        for (const Value& value : saved.values) EXPECT_NE(values.end(), std::ranges::find(values, value));
    }
}

TEST(Settings, AnEmptyKeyLeavesTheFileAsItIs) {
    FakeMachine machine;
    machine.files[kSettingsFile] = kOldFile;
    EXPECT_TRUE(saveFolderSettings(machine));
    machine.put(settings());
    EXPECT_TRUE(saveFolderSettings(machine));
    EXPECT_EQ(kOldFile, machine.files[kSettingsFile]);
}

}  // namespace
}  // namespace bromvale::starter
