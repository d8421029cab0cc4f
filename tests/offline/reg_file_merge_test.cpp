#include "platform/offline/reg_files/reg_file.h"

#include <gtest/gtest.h>

#include "platform/offline/desktop/shell_api.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {
namespace {

class MergeTest : public ::testing::Test {
  protected:
    static Registry& registry() { return machine().registry; }
    static std::string text(const std::string& key, const std::string& name) {
        const auto value = registry().value(key, name);
        return value ? value->data.substr(0, value->data.find('\0')) : "<missing>";
    }
};

constexpr const char* kKey = "HKEY_LOCAL_MACHINE\\Software\\A";

TEST_F(MergeTest, ASoundFileIsEnteredAsAWhole) {
    mergeRegText(
        "REGEDIT4\r\n\r\n; "
        "x\r\n[HKEY_LOCAL_MACHINE\\Software\\A]\r\n@=\"C:\\\\x\"\r\n\"n\"=dword:00000007\r\n",
        registry());
    EXPECT_EQ(text(kKey, ""), "C:\\x");
    EXPECT_EQ(registry().value(kKey, "n")->type, REG_DWORD);
}

TEST_F(MergeTest, WhatIsWrongIsPassedOverLineByLine) {
    mergeRegText(
        "Windows Registry Editor Version 5.00\r\n\r\n\r\n; Kopf\r\n"
        "[HKEY_LOCAL_MACHINESoftware\\Verloren]\r\n\"x\"=\"1\"\r\n\r\n"
        "[HKEY_LOCAL_MACHINE\\Software\\A]\r\nohne=\"1\"\r\n\"gut\"=\"2\"\r\n\"offen\"=\"a\"b\"\r\n\"auch\"="
        "\"3\"\r\n\r\n"
        "[HKEY_LOCAL_MACHINE\\Software\\B]\r\n@=\"4\"\r\n",
        registry());
    EXPECT_EQ(text(kKey, "gut"), "2");
    EXPECT_EQ(text(kKey, "auch"), "3");
    EXPECT_EQ(registry().values(kKey).size(), 2u);
    EXPECT_EQ(text("HKEY_LOCAL_MACHINE\\Software\\B", ""), "4");
    EXPECT_FALSE(registry().exists("HKEY_LOCAL_MACHINE\\Software\\Verloren"));
}

TEST_F(MergeTest, ABackslashThatBeginsNoEscapeIsDropped) {
    mergeRegText(
        "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\A]\r\n\"einfach\"=\"C:\\Weg\\weg."
        "dll\"\r\n\"doppelt\"=\"C:\\\\Weg\"\r\n",
        registry());
    EXPECT_EQ(text(kKey, "einfach"), "C:Wegweg.dll");
    EXPECT_EQ(text(kKey, "doppelt"), "C:\\Weg");
}

TEST_F(MergeTest, AQuoteInTheNameOfAKeyBeginsNoText) {
    mergeRegText("REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\Software\\A\"\\ \\B\"C\\\\D]\r\n\"v\"=\"1\"\r\nfalsch\r\n",
                 registry());
    EXPECT_EQ(text("HKEY_LOCAL_MACHINE\\Software\\A\"\\ \\B\"C\\D", "v"), "1");
}

TEST_F(MergeTest, WithoutAHeaderNothingIsEntered) {
    mergeRegText("[HKEY_LOCAL_MACHINE\\Software\\A]\r\n@=\"1\"\r\n", registry());
    mergeRegText("", registry());
    mergeRegText("\r\n", registry());
    EXPECT_FALSE(registry().exists(kKey));
}

TEST_F(MergeTest, OnlyTheVerbOpenEnters) {
    machine().drives.writeFile("C:\\a.REG",
                               "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\A]\r\n@=\"1\"\r\n");
    ShellExecuteA(nullptr, "Edit", "C:\\a.REG", nullptr, nullptr, 1);
    EXPECT_FALSE(registry().exists(kKey));
    ShellExecuteA(nullptr, "Open", "C:\\a.REG", nullptr, nullptr, 1);
    EXPECT_EQ(text(kKey, ""), "1");
    EXPECT_EQ(machine().events.count(EventKind::ShellExecute), 2u);
}

TEST_F(MergeTest, OtherFilesAreOnlyRecorded) {
    machine().drives.writeFile("C:\\a.txt",
                               "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\A]\r\n@=\"1\"\r\n");
    ShellExecuteA(nullptr, "open", "C:\\a.txt", nullptr, nullptr, 1);
    EXPECT_FALSE(registry().exists(kKey));
}

}  // namespace
}  // namespace bromvale::offline
