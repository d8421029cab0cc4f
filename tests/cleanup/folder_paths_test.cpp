// Paths of folders that are emptied, and those that are not since the system would read them otherwise.
#include "cleanup/folder_paths.h"

#include "cleanup/emptying.h"
#include "platform/exact/text.h"
#include "tests/cleanup/cleanup_fixture.h"

namespace bromvale::testing {
namespace {

TEST(FolderPaths, ThatStandForThemselvesAreTaken) {
    for (const char* path :
         {"C:\\", "d:\\Temp", "C:\\Temp\\",
          "C:\\Dokumente und Einstellungen\\Jörg\\Lokale Einstellungen\\Temp", "C:\\DOKUME~1\\x",
          "C:\\.x\\..y", "C:\\a\\ b", "\\\\Rechner\\Ablage", "\\\\Rechner\\C$\\Müll\\"}) {
        EXPECT_EQ(refusalOf(path), "") << path;
    }
}

struct HostilePath {
    const char* path;
    const char* reason;
};

constexpr const char* kNotWhole =
    "Der Pfad ist nicht vollständig: er beginnt weder mit einem Laufwerk noch mit einer Netzwerkfreigabe.";
constexpr const char* kTwoSeparators = "Im Pfad stehen zwei Trennzeichen hintereinander.";

constexpr HostilePath kHostile[] = {
    {"C:\\Leeren\\..", "Windows liest den Teil \"..\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\t\\..", "Windows liest den Teil \"..\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\..\\", "Windows liest den Teil \"..\" des Pfads anders, als er dort steht."},
    {"C:\\..\\Leeren", "Windows liest den Teil \"..\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\.", "Windows liest den Teil \".\" des Pfads anders, als er dort steht."},
    {"C:\\.\\Leeren", "Windows liest den Teil \".\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\...", "Windows liest den Teil \"...\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\Daten.", "Windows liest den Teil \"Daten.\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\Daten.\\", "Windows liest den Teil \"Daten.\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren.\\Daten", "Windows liest den Teil \"Leeren.\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\Daten ", "Windows liest den Teil \"Daten \" des Pfads anders, als er dort steht."},
    {"C:\\Leeren \\Daten", "Windows liest den Teil \"Leeren \" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\ ", "Windows liest den Teil \" \" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\.. ", "Windows liest den Teil \".. \" des Pfads anders, als er dort steht."},
    {"C:\\ \\Leeren", "Windows liest den Teil \" \" des Pfads anders, als er dort steht."},
    {"C:\\Leeren/Daten", "Windows liest den Teil \"Leeren/Daten\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\a/..", "Windows liest den Teil \"a/..\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\*", "Windows liest den Teil \"*\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\Zdj?cia", "Windows liest den Teil \"Zdj?cia\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\a:b", "Windows liest den Teil \"a:b\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\\"Daten\"", "Windows liest den Teil \"\"Daten\"\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\a\tb", "Windows liest den Teil \"a\tb\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\nul", "Windows liest den Teil \"nul\" des Pfads anders, als er dort steht."},
    {"C:\\Leeren\\CON.d\\x", "Windows liest den Teil \"CON.d\" des Pfads anders, als er dort steht."},
    {"\\\\?\\C:\\Leeren", "Windows liest den Teil \"?\" des Pfads anders, als er dort steht."},
    {"\\\\.\\C:\\Leeren", "Windows liest den Teil \".\" des Pfads anders, als er dort steht."},
    {"\\\\Rechner\\..\\C$", "Windows liest den Teil \"..\" des Pfads anders, als er dort steht."},
    {"C:\\\\", kTwoSeparators},
    {"C:\\Leeren\\\\", kTwoSeparators},
    {"C:\\\\Leeren", kTwoSeparators},
    {"C:\\Leeren\\\\Daten", kTwoSeparators},
    {"\\\\\\Rechner\\Ablage", kTwoSeparators},
    {"\\\\Rechner\\\\Ablage", kTwoSeparators},
    {"", kNotWhole},
    {"\\", kNotWhole},
    {"C", kNotWhole},
    {"C:", kNotWhole},
    {"C:Daten", kNotWhole},
    {"C:..", kNotWhole},
    {"Daten", kNotWhole},
    {".", kNotWhole},
    {"..", kNotWhole},
    {"\\Daten", kNotWhole},
    {" C:\\Leeren", kNotWhole},
    {"\"C:\\Leeren\"", kNotWhole},
    {"%TEMP%", kNotWhole},
    {"C:/Leeren", kNotWhole},
    {"//Rechner/Ablage", kNotWhole},
    {"/", kNotWhole},
    {"\xC4:\\Leeren", kNotWhole},
    {"1:\\Leeren", kNotWhole},
    {"\\\\", kNotWhole},
    {"\\\\Rechner", kNotWhole},
    {"\\\\Rechner\\", kNotWhole},
};

TEST(FolderPaths, ThatLeadElsewhereAreRefused) {
    for (const HostilePath& row : kHostile) EXPECT_EQ(refusalOf(row.path), row.reason) << row.path;
}

TEST(FolderPaths, WithLettersThatTheCodePageLacksAreRefused) {
    for (const char16_t* path : {u"C:\\Leeren\\\uFF0E\uFF0E", u"C:\\Leeren\\a\uFF3Cb", u"C:\\Zdj\u0119cia",
                                 u"C:\\Foto\u2011Alt", u"\uFF23:\\Leeren", u"\\\\Rechner\\\u041F\u0430"}) {
        EXPECT_EQ(refusalOf(exactText(path)),
                  "Der Pfad enthält Zeichen, die dieses Programm nicht genau wiedergeben kann.");
    }
    // The byte that begins a mark is none of a folder.
    EXPECT_EQ(refusalOf("C:\\a\x1A"
                        "00321"),
              "Der Pfad enthält Zeichen, die dieses Programm nicht genau wiedergeben kann.");
}

// The mask must fit behind the path, with its backslash.
TEST(FolderPaths, ThatAreTooLongToBeListedAreRefused) {
    const std::string longest = "C:\\" + std::string(252, 'a');
    EXPECT_EQ(refusalOf(longest), "");
    EXPECT_EQ(refusalOf(longest + "\\"), "");
    EXPECT_EQ(refusalOf(longest + "a"), "Der Pfad ist zu lang.");
    EXPECT_EQ(refusalOf(longest + "a\\"), "Der Pfad ist zu lang.");
}

// --- what becomes of the lines of the list ---

class RefusedLines : public CleanupTest {
  protected:
    RefusedLines() {
        above_ = makeBin("Leeren");
        makeFolderOnDisk(above_ + "Daten");
        makeFolderOnDisk(above_ + "t");
        good_ = makeBin("Gut");
        fill();
    }
    void fill() {
        for (const std::string& path : {above_, above_ + "Daten\\", above_ + "t\\", good_})
            writeWholeFile(path + "a.txt", "x");
    }
    void expectOnlyTheGoodOneEmptied() {
        EXPECT_EQ(filesIn(above_, "*"), (Texts{"Daten", "a.txt", "t"}));
        EXPECT_EQ(filesIn(above_ + "Daten\\", "*"), Texts{"a.txt"});
        EXPECT_EQ(filesIn(above_ + "t\\", "*"), Texts{"a.txt"});
        EXPECT_EQ(filesIn(good_, "*"), Texts{});
    }
    [[nodiscard]] std::string hostileList() const {
        return above_ + "Daten.\r\n" + above_ + "t\\..\r\n" + above_ + "*\r\n" + good_ + "\r\n";
    }
    [[nodiscard]] std::string words() const {
        const std::string otherwise = "\" des Pfads anders, als er dort steht.";
        return "Diese Ordner der Liste wurden nicht geleert:\r\n\r\n" + above_ +
               "Daten.\r\nWindows liest den Teil \"Daten." + otherwise + "\r\n\r\n" + above_ +
               "t\\..\r\nWindows liest den Teil \".." + otherwise + "\r\n\r\n" + above_ +
               "*\r\nWindows liest den Teil \"*" + otherwise;
    }

    std::string above_;
    std::string good_;
};

TEST_F(RefusedLines, AreToldInOneBoxByTheButtonAndTheOthersAreEmptied) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        fill();
        openPage(hostileList());
        form().cleanup.cmdInhaltLöschen.userClick();
        expectOnlyTheGoodOneEmptied();
        ASSERT_EQ(boxes().size(), DelFilePermanent + 1u);
        EXPECT_EQ(boxes().back().text, words());
        EXPECT_EQ(boxes().back().caption, "Bromvale");
    }
    EXPECT_EQ(loadedForms().size(), 1u);
}

TEST_F(RefusedLines, AreToldInOneBoxByTheMenuAndTheOthersAreEmptied) {
    openPage(hostileList());
    list().userSelect({1, 2, 3, 4});
    form().cleanup.mnuPopUpOrdnerEinzeln.userChoose();
    expectOnlyTheGoodOneEmptied();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, words());
}

TEST_F(RefusedLines, AreToldUpToTen) {
    std::string lines;
    for (int i = 0; i < 12; ++i) lines += "a" + std::to_string(i) + "\r\n";
    openPage(lines);
    form().cleanup.cmdInhaltLöschen.userClick();
    ASSERT_EQ(boxes().size(), 1u);
    const std::string& text = boxes()[0].text;
    EXPECT_NE(text.find("\r\na9\r\n"), std::string::npos);
    EXPECT_EQ(text.find("\r\na10\r\n"), std::string::npos);
    EXPECT_EQ(text.substr(text.rfind("\r\n")), "\r\n... und 2 weitere.");
}

// The current directory of a start with Windows is a folder of the system.
TEST_F(RefusedLines, OfFoldersByTheCurrentDirectoryLeaveThemAlone) {
    openPage("Daten\r\n.\r\nt\r\n" + good_);
    SetCurrentDirectoryA(above_.c_str());
    form().cleanup.cmdInhaltLöschen.userClick();
    SetCurrentDirectoryA(folder().c_str());
    expectOnlyTheGoodOneEmptied();
}

}  // namespace
}  // namespace bromvale::testing
