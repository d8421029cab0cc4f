// Reading registry files: the forms of the registry editor, and what is refused.
#include "platform/offline/reg_files/reg_file.h"

#include <unistd.h>

#include <ostream>

#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

// ASCII only, so that the expectation does not rest on the code under test.
std::string wide(std::string_view ascii) {
    std::string result = "\xFF\xFE";
    for (const char c : ascii) {
        result += c;
        result += '\0';
    }
    return result;
}

std::string messageOf(const std::optional<RegFileError>& error) {
    return error ? error->file + ":" + std::to_string(error->line) + ": " + error->reason : "read";
}

struct Row {
    const char* name;
    std::string file;
    std::string content;
};

// Names the row in failures and test lists.
void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class GoodFileTest : public RegistryTest, public ::testing::WithParamInterface<Row> {};

// What can be read once only is read to its end before it is looked through twice.
TEST_F(RegistryTest, AFileThatIsAPipeIsRead) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const std::string file =
        "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"v\"=\"" + std::string(9000, 'x') + "\"\r\n";
    ASSERT_EQ(::write(ends[1], file.data(), file.size()), static_cast<ssize_t>(file.size()));
    ::close(ends[1]);
    EXPECT_EQ("read", messageOf(loadRegFile("/dev/fd/" + std::to_string(ends[0]), registry())));
    ::close(ends[0]);
    std::string text;
    for (int i = 0; i < 9000; ++i) text += "78";
    EXPECT_EQ("HKEY_CURRENT_USER\\A\n  v|1|" + text + "00\n", dump(registry()));
}

TEST_P(GoodFileTest, IsReadAsItStands) {
    EXPECT_EQ("read", messageOf(loadRegText(GetParam().file, "x.reg", registry())));
    EXPECT_EQ(GetParam().content, dump(registry()));
}

const std::string kKey = "HKEY_CURRENT_USER\\A\n";
const std::string kAnsi = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n";
const std::string kVersion5 = "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n";

const Row kGoodRows[] = {
    {"HeaderAlone", "REGEDIT4", ""},
    {"HeaderOf5AloneWithBlanks", "Windows Registry Editor Version 5.00 \t", ""},
    {"HeaderWithOneBlank", "REGEDIT4 \r\n", ""},
    {"Text", kAnsi + "\"v\"=\"abc\"\r\n", kKey + "  v|1|61626300\n"},
    {"DefaultValue", kAnsi + "@=\"abc\"\r\n", kKey + "  |1|61626300\n"},
    {"ValueNamedAt", kAnsi + "\"@\"=\"a\"\r\n", kKey + "  @|1|6100\n"},
    {"EmptyText", kAnsi + "@=\"\"\r\n", kKey + "  |1|00\n"},
    {"Escapes", kAnsi + "\"a\\\\b\\\"c\"=\"C:\\\\x \\\"y\\\"\"\r\n",
     kKey + "  a\\b\"c|1|433a5c7820227922"
            "00\n"},
    {"NoFinalLineBreak", kAnsi + "\"v\"=\"abc\"", kKey + "  v|1|61626300\n"},
    {"NoFinalLineBreakBehindADword", kAnsi + "\"v\"=dword:0000000a", kKey + "  v|4|0a000000\n"},
    {"LineFeeds", "REGEDIT4\n\n[HKEY_CURRENT_USER\\A]\n\"v\"=\"a\"\n\n", kKey + "  v|1|6100\n"},
    {"CarriageReturns", "REGEDIT4\r\r[HKEY_CURRENT_USER\\A]\r\"v\"=\"a\"\r\"w\"=hex:01,\\\r  02\r",
     kKey + "  v|1|6100\n  w|3|0102\n"},
    {"MixedLineBreaks", "REGEDIT4\r\r\r\n; c\r\r\n[HKEY_CURRENT_USER\\A]\n@=\"a\"\r\n", kKey + "  |1|6100\n"},
    {"LineBreaksInAText", kAnsi + "\"v\"=\"a\r\nb\nc\rd\"\r\n\"w\"=\"x\"\r\n",
     kKey + "  v|1|610d0a620a630d6400\n  w|1|7800\n"},
    {"LineBreakInAValueName", kAnsi + "\"a\nb\"=\"x\"\r\n", kKey + "  a\nb|1|7800\n"},
    {"BlanksBetweenBytes", kAnsi + "\"v\"=hex: 01 ,\t02 , 03 , \\\r\n  04 ; e\r\n",
     kKey + "  v|3|01020304\n"},
    {"CommentsAndBlanks", kAnsi + "; c\r\n  ;d\r\n\r\n \"v\" = \"a\"  ; e\r\n", kKey + "  v|1|6100\n"},
    {"Dword", kAnsi + "\"v\"=dword:89abCDEF\r\n", kKey + "  v|4|efcdab89\n"},
    {"ShortDword", kAnsi + "\"v\"=dword:1f\r\n", kKey + "  v|4|1f000000\n"},
    {"DwordsBeforeBlanksAndComments", kAnsi + "\"a\"=dword:1 ; c\r\n\"b\"=dword:2;c\r\n\"c\"=dword:3\t\r\n",
     kKey + "  a|4|01000000\n  b|4|02000000\n  c|4|03000000\n"},
    {"LongestNames",
     kAnsi + "[HKEY_CURRENT_USER\\" + std::string(255, 'n') + "]\r\n\"" + std::string(16383, 'v') +
         "\"=-\r\n",
     kKey + "HKEY_CURRENT_USER\\" + std::string(255, 'n') + "\n"},
    {"Bytes", kAnsi + "\"v\"=hex:01,fF,00\r\n", kKey + "  v|3|01ff00\n"},
    {"NoBytes", kAnsi + "\"v\"=hex:\r\n", kKey + "  v|3|\n"},
    {"TypedBytes", kAnsi + "\"v\"=hex(0):\r\n\"q\"=hex(b):01,02\r\n\"t\"=hex(00000063):ff\r\n",
     kKey + "  v|0|\n  q|11|0102\n  t|99|ff\n"},
    {"ContinuedBytes", kAnsi + "\"v\"=hex:01,\\\r\n  02,\\ \r\n\t03\r\n", kKey + "  v|3|010203\n"},
    {"ContinuedOverAnEmptyLine", kAnsi + "\"v\"=hex:01,\\\r\n  \\\r\n  02\r\n", kKey + "  v|3|0102\n"},
    {"ContinuedBehindTheColon", kAnsi + "\"v\"=hex(3):\\\r\n  02\r\n", kKey + "  v|3|02\n"},
    {"AnsiBytesOfTexts", kAnsi + "\"v\"=hex(2):61,fc,00\r\n\"m\"=hex(7):61,00,00\r\n",
     kKey + "  v|2|61fc00\n  m|7|610000\n"},
    {"WideBytesOfTexts",
     kVersion5 + "\"v\"=hex(2):61,00,fc,00,16,04,ac,20,00,00\r\n\"m\"=hex(7):61,00,00,00,00,00\r\n",
     kKey + "  v|2|wide 6100fc001604ac200000\n  m|7|610000\n"},
    {"WideBytesOfATextWithoutNul",
     kVersion5 + "\"v\"=hex(1):61,00\r\n\"z\"=hex(1):\r\n\"o\"=hex(1):61,00,62\r\n",
     kKey + "  v|1|61\n  z|1|\n  o|1|wide 610062\n"},
    {"WideFile", wide(kVersion5 + "\"v\"=\"abc\"\r\n"), kKey + "  v|1|61626300\n"},
    {"WideFileUmlautAndForeign",
     wide(kVersion5 + "@=\"") + "\xFC\0\x16\x04\xAC\x20"s + wide("\"\n").substr(2),
     kKey + "  |1|wide fc001604ac200000\n"},
    {"DeletedValue", kAnsi + "\"v\"=\"a\"\r\n\"w\"=\"b\"\r\n\"V\"=-\r\n@=-\r\n", kKey + "  w|1|6200\n"},
    {"DeletedKey",
     kAnsi + "@=\"a\"\r\n[HKEY_CURRENT_USER\\A\\B]\r\n[-hkey_current_user\\a]\r\n\"v\"=\"lost\"\r\n"
             "[HKEY_CURRENT_USER\\C]\r\n",
     "HKEY_CURRENT_USER\\C\n"},
    {"DeletedKeyThatIsMissing", kAnsi + "[-HKEY_CURRENT_USER\\Missing]\r\n", kKey},
    {"BracketsInKeyNames", kAnsi + "[HKEY_CURRENT_USER\\A\\x[1]y]\r\n[HKEY_CURRENT_USER\\A\\z]]\r\n",
     kKey + "HKEY_CURRENT_USER\\A\\x[1]y\nHKEY_CURRENT_USER\\A\\z]\n"},
    {"BlanksAndSigns",
     kAnsi + "[HKEY_CURRENT_USER\\A\\end ]\r\n\"a=b\"=\"c=d\"\r\n[HKEY_CURRENT_USER\\A\\=;\"]\r\n",
     kKey + "HKEY_CURRENT_USER\\A\\=;\"\nHKEY_CURRENT_USER\\A\\end \n  a=b|1|633d6400\n"},
    {"DoubledBackslashesInAKey", kAnsi + "[HKEY_CURRENT_USER\\\\A\\\\B\\]\r\n",
     kKey + "HKEY_CURRENT_USER\\A\\B\n"},
    {"AHiveItself", "REGEDIT4\n[HKEY_USERS]\n@=\"a\"\n", "  |1|6100\n"},
    {"ClassesRoot", "REGEDIT4\n[HKEY_CLASSES_ROOT\\X]\n@=\"a\"\n",
     "HKEY_LOCAL_MACHINE\\Software\nHKEY_LOCAL_MACHINE\\Software\\Classes\n"
     "HKEY_LOCAL_MACHINE\\Software\\Classes\\X\n  |1|6100\n"},
    {"Umlauts", "REGEDIT4\n[HKEY_CURRENT_USER\\Größe]\n\"Ä\"=\"ü\"\n",
     "HKEY_CURRENT_USER\\Größe\n  Ä|1|fc00\n"},
    {"LongTexts", kAnsi + "\"v\"=\"" + std::string(70000, 'x') + "\"\n\"w\"=\"a\"\n",
     kKey + "  v|1|" + hexOf(std::string(70000, 'x')) + "00\n  w|1|6100\n"},
};

INSTANTIATE_TEST_SUITE_P(Files, GoodFileTest, ::testing::ValuesIn(kGoodRows),
                         [](const auto& info) { return std::string(info.param.name); });

class BadFileTest : public RegistryTest, public ::testing::WithParamInterface<Row> {};

// `content` of a row is the whole message.
TEST_P(BadFileTest, IsOneErrorChangesNothingAndAGoodOneIsReadBehindIt) {
    registry().setText("HKEY_CURRENT_USER\\Kept", "v", "1");
    const std::string before = dump(registry());
    EXPECT_EQ(GetParam().content, messageOf(loadRegText(GetParam().file, "x.reg", registry())));
    EXPECT_EQ(before, dump(registry()));

    EXPECT_EQ("read", messageOf(loadRegText(kAnsi + "\"v\"=\"a\"\n", "y.reg", registry())));
    EXPECT_EQ(kKey + "  v|1|6100\n" + before, dump(registry()));
}

const std::string kNoHeader =
    "x.reg:1: no header: the first line must be \"REGEDIT4\" or \"Windows Registry Editor Version 5.00\"";
const std::string kBytes = "bytes need two hex digits each, with a comma between them";
const std::string kCut = "the last line has no line break, so it may be cut off";
const std::string kEscape = "wrong escape: only \\\\ and \\\" may follow a backslash in a text";

const Row kBadRows[] = {
    {"Empty", "", kNoHeader},
    {"NoHeader", "[HKEY_CURRENT_USER\\A]\r\n", kNoHeader},
    {"OtherVersion", "Windows Registry Editor Version 6.00\r\n", kNoHeader},
    {"HeaderBehindABlankLine", "\r\nREGEDIT4\r\n", kNoHeader},
    {"MarkOnly", "\xFF\xFE", kNoHeader},
    {"HalfAMark", "\xFF", kNoHeader},
    {"WideWithoutMark", wide("REGEDIT4\r\n").substr(2), kNoHeader},
    {"Garbage", kAnsi + "\"v\"=\"a\"\r\ngarbage\r\n", "x.reg:5: neither a key, a value nor a comment"},
    {"NulCharacter", kAnsi + "\"v\"=\"a\0b\"\r\n"s, "x.reg:4: a NUL character"},
    {"NulCharacterInATextsNextLine", kAnsi + "\"v\"=\"a\r\nb\0\"\r\n"s, "x.reg:4: a NUL character"},
    {"LongValueName", kAnsi + "\"" + std::string(16384, 'v') + "\"=-\r\n",
     "x.reg:4: the value name is longer than 16383 characters"},
    {"UnknownHive", kAnsi + "[HKEY_MINE\\A]\r\n", "x.reg:4: unknown hive \"HKEY_MINE\""},
    {"ShortHive", kAnsi + "[HKCU\\A]\r\n", "x.reg:4: unknown hive \"HKCU\""},
    {"EmptyKey", kAnsi + "[]\r\n", "x.reg:4: unknown hive \"\""},
    {"OpenBracket", kAnsi + "[HKEY_CURRENT_USER\\B\r\n", "x.reg:4: key without closing bracket"},
    {"TextBehindAKey", kAnsi + "[HKEY_CURRENT_USER\\B] x\r\n", "x.reg:4: unexpected text behind the key"},
    {"LongKeyName", kAnsi + "[HKEY_CURRENT_USER\\" + std::string(256, 'n') + "]\r\n",
     "x.reg:4: a key name is longer than 255 characters"},
    {"DeletedHive", kAnsi + "[-HKEY_CURRENT_USER]\r\n", "x.reg:4: a hive cannot be deleted"},
    {"KeyAtTheEndWithoutLineBreak", kAnsi + "[-HKEY_CURRENT_USER\\Kept]", "x.reg:4: " + kCut},
    {"ValueBeforeAKey", "REGEDIT4\r\n\"v\"=\"a\"\r\n", "x.reg:2: a value before the first key"},
    {"OpenText", kAnsi + "\"v\"=\"a\r\n\r\n", "x.reg:4: text without closing quote"},
    {"OpenEscape", kAnsi + "\"v\"=\"a\\", "x.reg:4: text without closing quote"},
    {"OpenName", kAnsi + "\"v\r\n", "x.reg:4: text without closing quote"},
    {"OpenTextEatsTheNext", kAnsi + "\"v\"=\"a\r\n\"w\"=\"b\"\r\n",
     "x.reg:4: unexpected text behind the text"},
    {"WrongEscape", kAnsi + "\"v\"=\"C:\\temp\"\r\n", "x.reg:4: " + kEscape},
    {"EscapeAtTheLinesEnd", kAnsi + "\"v\"=\"a\\\r\n\"\r\n", "x.reg:4: " + kEscape},
    {"NoEqualSign", kAnsi + "\"v\" \"a\"\r\n", "x.reg:4: no \"=\" behind the value name"},
    {"NoData", kAnsi + "\"v\"=\r\n", "x.reg:4: unknown kind of data"},
    {"UnquotedData", kAnsi + "@=abc\r\n", "x.reg:4: unknown kind of data"},
    {"TextBehindAText", kAnsi + "@=\"a\"b\r\n", "x.reg:4: unexpected text behind the text"},
    {"TextBehindADeletion", kAnsi + "@=-1\r\n", "x.reg:4: unexpected text behind the \"-\""},
    {"LongDword", kAnsi + "@=dword:123456789\r\n", "x.reg:4: a dword needs one to eight hex digits"},
    {"EmptyDword", kAnsi + "@=dword:\r\n", "x.reg:4: a dword needs one to eight hex digits"},
    {"NoHexDword", kAnsi + "@=dword:0000000g\r\n", "x.reg:4: a dword needs one to eight hex digits"},
    {"ShortDwordAtTheEnd", kAnsi + "@=dword:1234567", "x.reg:4: " + kCut},
    {"OddDigits", kAnsi + "@=hex:01,2\r\n", "x.reg:4: " + kBytes},
    {"NoHexDigit", kAnsi + "@=hex:0g\r\n", "x.reg:4: " + kBytes},
    {"ThreeDigits", kAnsi + "@=hex:012\r\n", "x.reg:4: unexpected text behind the bytes"},
    {"NoComma", kAnsi + "@=hex:01 02\r\n", "x.reg:4: unexpected text behind the bytes"},
    {"CommaAtTheEnd", kAnsi + "@=hex:01,\r\n", "x.reg:4: " + kBytes},
    {"BytesAtTheEndWithoutLineBreak", kAnsi + "@=hex:01,02", "x.reg:4: " + kCut},
    {"WrongDigitInAContinuation", kAnsi + "@=hex:01,\\\r\n  02,\\\r\n  xx\r\n", "x.reg:6: " + kBytes},
    {"CutContinuation", kAnsi + "@=hex:01,\\", "x.reg:4: the line that continues the bytes is missing"},
    {"CutBehindAContinuation", kAnsi + "@=hex:01,\\\r\n",
     "x.reg:4: the line that continues the bytes is missing"},
    {"ContinuationIntoAKey", kAnsi + "@=hex:01,\\\r\n[HKEY_CURRENT_USER\\B]\r\n", "x.reg:5: " + kBytes},
    {"TextBehindAContinuation", kAnsi + "@=hex:01,\\ 02\r\n",
     "x.reg:4: text behind the backslash that continues the line"},
    {"NoType", kAnsi + "@=hex():01\r\n",
     "x.reg:4: a type needs one to eight hex digits and a closing parenthesis"},
    {"OpenType", kAnsi + "@=hex(2\r\n",
     "x.reg:4: a type needs one to eight hex digits and a closing parenthesis"},
    {"NoColonBehindTheType", kAnsi + "@=hex(2)01\r\n", "x.reg:4: no \":\" behind the type"},
    {"HalfAWideCharacter", wide(kVersion5 + "@=\"a\"\r\n") + "x",
     "x.reg:4: the file ends within a UTF-16 character"},
};

INSTANTIATE_TEST_SUITE_P(Files, BadFileTest, ::testing::ValuesIn(kBadRows),
                         [](const auto& info) { return std::string(info.param.name); });

class ReaderTest : public RegistryTest {};

TEST_F(ReaderTest, AFileThatCannotBeOpenedIsAnErrorWithoutLine) {
    EXPECT_EQ("/missing/x.reg:0: cannot be opened: No such file or directory",
              messageOf(loadRegFile("/missing/x.reg", registry())));
}

TEST_F(ReaderTest, SeveralFilesMergeInOrder) {
    EXPECT_EQ("read", messageOf(loadRegText(kAnsi + "\"v\"=\"1\"\n\"w\"=\"1\"\n", "1.reg", registry())));
    EXPECT_EQ("read",
              messageOf(loadRegText(kAnsi + "\"V\"=dword:00000002\n\"x\"=\"2\"\n", "2.reg", registry())));
    EXPECT_EQ(kKey + "  v|4|02000000\n  w|1|3100\n  x|1|3200\n", dump(registry()));
}

}  // namespace
}  // namespace bromvale::offline::testing
