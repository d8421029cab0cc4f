// The words of scripts and transcripts, and the lines of what leaves the program.
#include "bromvale-offline/words.h"

#include <gtest/gtest.h>

#include "bromvale-offline/script.h"
#include "platform/dialogs.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::offline {
namespace {

TEST(ScriptWords, EachButtonHasItsName) {
    const std::pair<int, const char*> buttons[] = {{IDOK, "OK"},
                                                   {IDCANCEL, "Abbrechen"},
                                                   {IDABORT, "Beenden"},
                                                   {IDRETRY, "Wiederholen"},
                                                   {IDIGNORE, "Ignorieren"},
                                                   {IDYES, "Ja"},
                                                   {IDNO, "Nein"}};
    for (const auto& [id, name] : buttons) {
        EXPECT_EQ(buttonName(id), name);
        EXPECT_EQ(buttonByName(name), id) << name;
    }
    EXPECT_EQ(buttonByName("abbrechen"), IDCANCEL);
    EXPECT_EQ(buttonByName("?"), std::nullopt);
    EXPECT_EQ(buttonName(0), "?");
}

TEST(ScriptWords, ABoxIsToldByItsIconAndItsButtons) {
    const std::pair<std::uint32_t, const char*> boxes[] = {
        {0x00, "plain OK"},
        {0x10, "stop OK"},
        {0x21, "question OK/Abbrechen"},
        {0x32, "exclamation Beenden/Wiederholen/Ignorieren"},
        {0x43, "information Ja/Nein/Abbrechen"},
        {0x104, "plain Ja/Nein"},
        {0x05, "plain Wiederholen/Abbrechen"},
        {0x06, "plain OK"},
        {0x50, "plain OK"}};
    for (const auto& [style, text] : boxes) EXPECT_EQ(boxKind(style), text) << style;
}

TEST(ScriptWords, EachKeyHasItsName) {
    const std::pair<const char*, int> keys[] = {
        {"Tab", 9},     {"Clear", 12},    {"Return", 13},  {"Enter", 13},  {"Escape", 27}, {"Space", 32},
        {"PageUp", 33}, {"PageDown", 34}, {"End", 35},     {"Home", 36},   {"Left", 37},   {"Up", 38},
        {"Right", 39},  {"Down", 40},     {"Execute", 43}, {"Insert", 45}, {"Delete", 46}, {"Menu", 93},
        {"F1", 112},    {"f24", 135},     {"a", 'A'},      {"7", '7'},     {"112", 112},   {"delete", 46}};
    for (const auto& [name, number] : keys) {
        const auto press = keyByName(name);
        ASSERT_TRUE(press) << name;
        EXPECT_EQ(press->key, number) << name;
        EXPECT_FALSE(press->shift || press->alt) << name;
    }
    for (const char* const name : {"", "F0", "F25", "F", "Taste", "Ctrl+A", "Alt+", "1x"})
        EXPECT_EQ(keyByName(name).has_value(), *name == 'F' && name[1] == '\0') << name;
    const auto both = keyByName("shift+ALT+s");
    ASSERT_TRUE(both);
    EXPECT_TRUE(both->shift && both->alt);
    EXPECT_EQ(both->key, 'S');
    EXPECT_TRUE(keyByName("Alt+F4")->alt);
    EXPECT_FALSE(keyByName("Alt+F4")->shift);
    EXPECT_EQ(keyByName("+")->key, '+');
}

TEST(ScriptWords, EachKindOfControlHasItsName) {
    const std::pair<ControlKind, const char*> kinds[] = {{ControlKind::Form, "form"},
                                                         {ControlKind::Label, "label"},
                                                         {ControlKind::Button, "button"},
                                                         {ControlKind::CheckBox, "check box"},
                                                         {ControlKind::OptionButton, "option button"},
                                                         {ControlKind::TextBox, "text box"},
                                                         {ControlKind::ComboBox, "combo box"},
                                                         {ControlKind::Frame, "frame"},
                                                         {ControlKind::Line, "line"},
                                                         {ControlKind::Picture, "picture"},
                                                         {ControlKind::ListView, "list view"},
                                                         {ControlKind::ImageList, "image list"},
                                                         {ControlKind::ListBar, "list bar"},
                                                         {ControlKind::StatusBar, "status bar"},
                                                         {ControlKind::ProgressBar, "progress bar"},
                                                         {ControlKind::Timer, "timer"},
                                                         {ControlKind::Menu, "menu"},
                                                         {ControlKind::Socket, "socket"}};
    for (const auto& [kind, name] : kinds) EXPECT_EQ(kindName(kind), name);
}

std::string errorOf(std::string_view rows, int count) {
    try {
        static_cast<void>(toRows(rows, count));
    } catch (const ScriptError& error) {
        return error.text;
    }
    return "none";
}

TEST(ScriptWords, RowsAreNumbersAndRanges) {
    using Rows = std::vector<int>;
    EXPECT_EQ(toRows("1 3-5  2", 5), (Rows{1, 3, 4, 5, 2}));
    EXPECT_EQ(toRows("all", 3), (Rows{1, 2, 3}));
    EXPECT_EQ(toRows("none", 3), Rows());
    EXPECT_EQ(toRows("2-2", 2), Rows{2});
    EXPECT_EQ(errorOf("", 3), "which rows?");
    EXPECT_EQ(errorOf("0", 3), "there is no row 0, the list has 3");
    EXPECT_EQ(errorOf("2 4", 3), "there is no row 4, the list has 3");
    EXPECT_EQ(errorOf("3-2", 3), "there is no row 3-2, the list has 3");
    EXPECT_EQ(errorOf("2x", 3), "'2x' is no number");
    EXPECT_EQ(errorOf("1-", 3), "'' is no number");
}

TEST(ScriptWords, LineEndsAreWrittenByASign) {
    EXPECT_EQ(unescaped("a\\nb\\n\\nc\\"), "a\r\nb\r\n\r\nc\\");
    std::string_view text = "eins  zwei drei";
    EXPECT_EQ(takeWord(text), "eins");
    EXPECT_EQ(text, "zwei drei");
    EXPECT_EQ(takeWord(text), "zwei");
    EXPECT_EQ(takeWord(text), "drei");
    EXPECT_EQ(text, "");
    EXPECT_EQ(takeWord(text), "");
}

TEST(TranscriptLines, ControlCharactersAreWrittenAsNumbers) {
    EXPECT_EQ(oneLine("a\r\nb\nc\rd\te\x01\x1F z"), "a\\nb\\nc\\rd\te\\x01\\x1f z");
    EXPECT_EQ(oneLine("\r"), "\\r");
    EXPECT_EQ(oneLine("\r\r\n"), "\\r\\n");
}

class TranscriptOfEvents : public bromvale::testing::TestMachine {
  protected:
    ~TranscriptOfEvents() override {
        machine().events.sink = nullptr;
        machine().events.keep = true;
    }
    static std::string lineOf(const Event& event) {
        Transcript transcript;
        transcript.attach();
        ::testing::internal::CaptureStdout();
        machine().events.record(event);
        transcript.flush();
        return ::testing::internal::GetCapturedStdout();
    }
};

TEST_F(TranscriptOfEvents, EachKindHasItsLine) {
    using Kind = EventKind;
    const std::pair<Event, const char*> rows[] = {
        {{Kind::MessageBox, "Text\nzwei", "Titel", 0x24, IDYES},
         "box question Ja/Nein \"Titel\": Text\\nzwei -> Ja"},
        {{Kind::ShellExecute, "C:\\a.reg", "Open", 1}, "shell Open: C:\\a.reg"},
        {{Kind::Run, "a.exe /x"}, "run: a.exe /x"},
        {{Kind::Restart, "", "", 6}, "restart: flags 6"},
        {{Kind::Privilege, "SeShutdownPrivilege"}, "privilege: SeShutdownPrivilege"},
        {{Kind::TrayAdd, "Bromvale"}, "tray icon added: Bromvale"},
        {{Kind::TrayModify, "Bromvale"}, "tray icon changed: Bromvale"},
        {{Kind::TrayDelete, "Bromvale"}, "tray icon removed: Bromvale"},
        {{Kind::Foreground, "x"}, "window to the front"},
        {{Kind::Help, "a.chm", "", 18}, "help: command 18 \"a.chm\""},
        {{Kind::Menu, "a | b", "b"}, "menu: a | b (default b)"},
        {{Kind::Menu, "a | b"}, "menu: a | b"},
        {{Kind::FileMade, "C:\\a", "geleert"}, "empty file: C:\\a"},
        {{Kind::FileMade, "C:\\a"}, "make file: C:\\a"},
        {{Kind::FileWritten, "C:\\a", "ä\r\n"}, "write C:\\a: \xC3\xA4\\n"},
        {{Kind::FileWritten, "C:\\a", std::string("\xFF\xFE\xE4\0\n\0", 6)}, "write C:\\a: \xC3\xA4\\n"},
        {{Kind::FileWritten, "C:\\a", std::string("a\0b\0", 4)}, "write C:\\a: ab"},
        {{Kind::FileWritten, "C:\\a", std::string("a\0b", 3)}, "write C:\\a: a\\x00b"},
        {{Kind::FileWritten, "C:\\a", std::string("ab\0\0", 4)}, "write C:\\a: ab\\x00\\x00"},
        {{Kind::FileDeleted, "C:\\a", "Papierkorb"}, "recycle file: C:\\a"},
        {{Kind::FileDeleted, "C:\\a"}, "delete file: C:\\a"},
        {{Kind::FileMoved, "C:\\neu", "C:\\alt"}, "move file: C:\\alt -> C:\\neu"},
        {{Kind::FolderMade, "C:\\a"}, "make folder: C:\\a"},
        {{Kind::FolderDeleted, "C:\\a", "Papierkorb"}, "recycle folder: C:\\a"},
        {{Kind::FolderDeleted, "C:\\a"}, "delete folder: C:\\a"},
        {{Kind::KeyMade, "HKEY_X"}, "make key: HKEY_X"},
        {{Kind::KeyDeleted, "HKEY_X"}, "delete key: HKEY_X"},
        {{Kind::ValueSet, "HKEY_X", "\"a\"=\"b\""}, "set value: HKEY_X: \"a\"=\"b\""},
        {{Kind::ValueDeleted, "HKEY_X", "\"a\""}, "delete value: HKEY_X: \"a\""},
        {{Kind::Library, "a.dll", "DllRun"}, "call DllRun of a.dll"},
        {{Kind::Fetch, "http://a/"}, "fetch: http://a/"},
        {{Kind::Download, "http://a/b"}, "download: http://a/b"},
        {{Kind::SaveDialog, "a.zip", "C:\\b.zip"}, "save dialog: a.zip -> C:\\b.zip"},
        {{Kind::SaveDialog, "a.zip"}, "save dialog: a.zip -> cancelled"},
        {{Kind::Connect, "a:80"}, "connect: a:80"},
        {{Kind::Browse, "Titel", "C:\\b"}, "folder dialog: Titel -> C:\\b"},
        {{Kind::Browse, "Titel"}, "folder dialog: Titel -> cancelled"},
        {{Kind::End, "", "", 3}, "end: exit code 3"},
    };
    for (const auto& [event, line] : rows) EXPECT_EQ(lineOf(event), std::string(line) + "\n");
}

}  // namespace
}  // namespace bromvale::offline
