#include "repair/undo_file.h"

#include <gtest/gtest.h>

namespace bromvale {
namespace {

std::string headerBytes(std::string_view regFileHeader) {
    std::string bytes;
    for (const std::string& line :
         undoHeaderLines({regFileHeader, "Bromvale", "1.0.0", "Sonntag, 15. Nov 2026 - 07:12:09", "J\xFCrgen",
                          "RECHNER", "Windows XP"}))
        bytes += line + "\r\n";
    return bytes;
}

const std::string kComments =
    "; Die nachfolgenden  Registryschl\xFCssel wurden von Bromvale Version 1.0.0\r\n"
    "; als falsch erkannt und entfernt.\r\n"
    "; Mit einem Doppelklick im Windows-Explorer auf diese Datei, werden die hier\r\n"
    "; gesicherten Registryschl\xFCssel wieder in die Registrierungs-Datenbank eingetragen.\r\n"
    "\r\n\r\n"
    "; erstellt am: Sonntag, 15. Nov 2026 - 07:12:09\r\n"
    "; erstellt von: J\xFCrgen Computername: RECHNER\r\n"
    "; Betriebssystem: Windows XP\r\n"
    "\r\r\n";

TEST(UndoFileTest, TheHeaderOfWindows98IsFollowedByThreeLineEnds) {
    EXPECT_EQ(headerBytes("REGEDIT4\r\n\r\n"), "REGEDIT4\r\n\r\n\r\n" + kComments);
}

TEST(UndoFileTest, TheHeaderOfWindowsXpStandsInAnsiText) {
    EXPECT_EQ(headerBytes("Windows Registry Editor Version 5.00\r\n\r\n"),
              "Windows Registry Editor Version 5.00\r\n\r\n\r\n" + kComments);
}

TEST(UndoFileTest, ARecordIsAKeyLineAValueLineAndABlankLine) {
    EXPECT_EQ(undoRecord("[HKEY_LOCAL_MACHINE\\K]", "\"Name\"", "C:\\\\x"),
              "[HKEY_LOCAL_MACHINE\\K]\r\n\"Name\"=\"C:\\\\x\"\r\n\r\n");
}

TEST(UndoFileTest, AnEmptyNameIsWrittenAsAtWithoutQuotes) {
    EXPECT_EQ(undoRecord("[HKEY_LOCAL_MACHINE\\K]", "@", ""), "[HKEY_LOCAL_MACHINE\\K]\r\n@=\"\"\r\n\r\n");
}

TEST(UndoFileTest, NothingIsEscaped) {
    EXPECT_EQ(undoRecord("[HKEY_LOCAL_MACHINESoftware\\K]", "Na\"me", "a\"b\\c\r\n\xE4"),
              "[HKEY_LOCAL_MACHINESoftware\\K]\r\nNa\"me=\"a\"b\\c\r\n\xE4\"\r\n\r\n");
}

TEST(UndoFileTest, TheFilesNameHoldsItsStamp) {
    EXPECT_EQ(undoFileName("15112026_071209"),
              "R\xFC"
              "ckg\xE4ngig_15112026_071209.reg");
}

}  // namespace
}  // namespace bromvale
