// Emptying and deleting on the real file system, where names hold characters that the program's code page
// lacks: what comes back for them separates folders or stands for many files.
#include <algorithm>

#include "cleanup/entry_names.h"
#include "platform/exact/text.h"
#include "repair/backup_area.h"
#include "tests/cleanup/cleanup_fixture.h"
#include "tests/cleanup/host_links_win32.h"

namespace bromvale::testing {
namespace {

using Wide = std::wstring;

constexpr const wchar_t* kLeavesTheFolder = L"..\uFF3CDokumente\uFF3C\uFF0A";  // "..\Dokumente\*"
constexpr const wchar_t* kStar = L"\uFF0A";                                    // "*"
constexpr const wchar_t* kCyrillic = L"\u041F\u0430\u043F\u043A\u0430";        // "?????"

Wide wide(const std::string& text) {
    Wide result(text.size(), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), result.data(),
                        static_cast<int>(result.size()));
    return result;
}
std::u16string units(const Wide& text) {
    return {text.begin(), text.end()};
}
bool existsWide(const Wide& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}
void writeWide(const Wide& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
}
void makeFolderWide(const Wide& path) {
    ASSERT_TRUE(CreateDirectoryW(path.c_str(), nullptr));
}
// Whether it is there; gone afterwards, so that nothing of a test stays behind.
bool takeAway(const Wide& path) {
    const bool there = existsWide(path);
    if (!DeleteFileW(path.c_str())) RemoveDirectoryW(path.c_str());
    return there;
}

class ForeignNames : public CleanupTest {
  protected:
    ForeignNames() {
        neighbour_ = makeBin("Dokumente");
        writeWholeFile(neighbour_ + "brief.txt", "brief");
        path_ = makeBin("Leeren");
    }
    [[nodiscard]] Wide in(const Wide& name) const { return wide(path_) + name; }
    // A name that no other test has thrown away.
    static Wide own(const Wide& name) { return std::to_wstring(GetCurrentProcessId()) + name; }
    void expectNeighbourWhole() {
        EXPECT_EQ(readWholeFile(neighbour_ + "brief.txt"), "brief") << DelFilePermanent;
    }
    static Wide bin() { return wide(hostBin()); }

    std::string path_;
    std::string neighbour_;
};

TEST_F(ForeignNames, ThatReadAsAnotherFoldersFilesLeaveThatFolderAlone) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        writeWide(in(kLeavesTheFolder));
        writeWide(in(L"..\uFF3CDokumente"));
        writeWide(in(L"..\u2215Dokumente\u2215brief.txt"));
        ASSERT_EQ(filesIn(path_, "*").back(), "..\\Dokumente\\*");
        FileDel(path_, "");
        expectNeighbourWhole();
        EXPECT_FALSE(takeAway(in(kLeavesTheFolder))) << DelFilePermanent;
        EXPECT_FALSE(takeAway(in(L"..\uFF3CDokumente"))) << DelFilePermanent;
        EXPECT_FALSE(takeAway(in(L"..\u2215Dokumente\u2215brief.txt"))) << DelFilePermanent;
    }
}

TEST_F(ForeignNames, ThatReadAsThisFolderOrTheOneAboveLeaveThemAlone) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        for (const wchar_t* name : {L"\uFF0E", L"\uFF0E\uFF0E", L"\uFF0E\uFF0E\uFF0E", L"\uFF0E\uFF0E\u3000"})
            writeWide(in(name));
        FileDel(path_, "");
        expectNeighbourWhole();
        EXPECT_EQ(filesIn(path_, "*"), Texts{}) << DelFilePermanent;
        EXPECT_TRUE(exists(path_)) << DelFilePermanent;
    }
}

TEST_F(ForeignNames, AtTheTopGoLikeAllOthers) {
    const Wide file = own(Wide(kCyrillic) + L".txt");
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        writeWide(in(file));
        const Wide shortName = wide(reachableName(path_, exactText(units(file))));
        writeWide(in(kStar));
        makeFolderWide(in(kCyrillic));
        writeWholeFile(path_ + "a.txt", "x");
        FileDel(path_, "");
        EXPECT_FALSE(takeAway(in(file))) << DelFilePermanent;
        EXPECT_FALSE(takeAway(in(kStar))) << DelFilePermanent;
        EXPECT_FALSE(takeAway(in(kCyrillic))) << DelFilePermanent;
        EXPECT_FALSE(exists(path_ + "a.txt")) << DelFilePermanent;
        if (bin().empty()) continue;
        // Some bins name it as it was handed on, and keep its own name beside.
        EXPECT_EQ(takeAway(bin() + shortName) || takeAway(bin() + file), DelFilePermanent == 0);
    }
}

TEST_F(ForeignNames, OfAFilledFolderStayWithItWhenDeletedForGood) {
    DelFilePermanent = 1;
    makeFolderWide(in(kCyrillic));
    writeWide(in(kCyrillic) + L"\\x.txt");
    FileDel(path_, "");
    EXPECT_TRUE(takeAway(in(kCyrillic) + L"\\x.txt"));
    EXPECT_TRUE(takeAway(in(kCyrillic)));
}

TEST_F(ForeignNames, InsideASubFolderGoIntoTheBinWithIt) {
    const Wide below = own(L"unten");
    makeFolderWide(in(below));
    makeFolderWide(in(below) + L"\\" + kCyrillic);
    writeWide(in(below) + L"\\" + kCyrillic + L"\\" + kStar);
    writeWide(in(below) + L"\\" + kLeavesTheFolder);
    FileDel(path_, "");
    expectNeighbourWhole();
    EXPECT_FALSE(existsWide(in(below)));
    ASSERT_FALSE(bin().empty()) << "the place of the recycle bin isn't known here";
    EXPECT_TRUE(takeAway(bin() + below + L"\\" + kCyrillic + L"\\" + kStar));
    EXPECT_TRUE(takeAway(bin() + below + L"\\" + kCyrillic));
    EXPECT_TRUE(takeAway(bin() + below + L"\\" + kLeavesTheFolder));
    takeAway(bin() + below);
    // What the test has made and failed to see gone.
    takeAway(in(below) + L"\\" + kCyrillic + L"\\" + kStar);
    takeAway(in(below) + L"\\" + kCyrillic);
    takeAway(in(below) + L"\\" + kLeavesTheFolder);
}

TEST_F(ForeignNames, AreReachedByTheirShortNames) {
    writeWide(in(kStar));
    FoundEntry entry;
    ASSERT_EQ(findEntry(path_ + exactText(u"\uFF0A"), entry), 0u);
    EXPECT_EQ(entry.name, exactText(u"\uFF0A"));
    const std::string name = reachableName(path_, entry);
    EXPECT_TRUE(isPlainName(name)) << name;
    EXPECT_TRUE(exists(path_ + name));
    EXPECT_EQ(reachableName(path_, entry.name), name);
    takeAway(in(kStar));
}

// The listed name of the folder is that of its twin, in which there is nothing.
TEST_F(ForeignNames, OfAFolderWithALinkLeaveWhatLiesBehindItAlone) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        const std::string number = std::to_string(DelFilePermanent);
        const std::string bin = makeBin("Leeren" + number);
        const std::string made = makeBin("Leeren" + number + "\\a");
        makeFolderOnDisk(bin + "Zdjecia");
        makeFolderOnDisk(neighbour_ + "leer" + number);
        ASSERT_TRUE(makeLink(neighbour_, made + "Verweis")) << "no links can be made here";
        EXPECT_TRUE(makeLink(neighbour_ + "leer" + number, made + "Leerer"));
        const Wide folder = wide(bin) + L"Zdj\u0119cia";
        ASSERT_TRUE(MoveFileW(wide(bin + "a").c_str(), folder.c_str()));
        std::string path = bin;
        FileDel(path, "");
        expectNeighbourWhole();
        EXPECT_TRUE(exists(neighbour_ + "leer" + number)) << DelFilePermanent;
        EXPECT_FALSE(exists(bin + "Zdjecia")) << DelFilePermanent;
        // Where links can't be told from what they point to, they stay with their folder.
        if (existsWide(folder)) MoveFileW(folder.c_str(), wide(bin + "a").c_str());
        for (const char* name : {"Verweis", "Leerer"}) removeLink(made, name);
    }
}

TEST_F(ForeignNames, OfEveryKindAreEmptiedAndNothingElse) {
    const Wide names[] = {L"Zdj\u0119cie.txt",  L"\u0142ap",   L"Foto\u2011Alt", L"a\uFF3Cb", L"\uFF0E\uFF0E",
                          L"..\uFF3CDokumente", L"\uFF0A.txt", L"Daten\uFF0E",   L"a\u3000",  L"C\uFF1A"};
    for (const Wide& name : names) {
        writeWide(in(name));
        makeFolderWide(in(L"O" + name));
        writeWide(in(L"O" + name) + L"\\" + name);
    }
    FileDel(path_, "");
    expectNeighbourWhole();
    EXPECT_EQ(filesIn(path_, "*"), Texts{});
    EXPECT_EQ(filesIn(neighbour_, "*"), Texts{"brief.txt"});
    for (const Wide& name : names) EXPECT_FALSE(existsWide(in(name)) || existsWide(in(L"O" + name)));
}

// Such names are made and read with the prefix that switches the system's own reading of a path off.
TEST_F(ForeignNames, ThatTheSystemCutsNeverMeanTheOthers) {
    DelFilePermanent = 1;
    const Wide whole = L"\\\\?\\" + in(L"");
    makeFolderOnDisk(path_ + "voll");
    writeWholeFile(path_ + "voll\\a.txt", "x");
    makeFolderWide(whole + L"voll.");
    writeWide(whole + L"voll.\\b.txt");
    FileDel(path_, "");
    EXPECT_TRUE(takeAway(whole + L"voll\\a.txt"));
    EXPECT_TRUE(takeAway(whole + L"voll.\\b.txt"));
    EXPECT_TRUE(takeAway(whole + L"voll."));
}

// --- one file by its name ---

TEST_F(ForeignNames, OfAFileThatIsNamedDeleteNoOther) {
    makeFolderOnDisk(BackupPath);
    for (const char* name : {"a.reg", "b.reg", "abcd.reg"}) writeWholeFile(BackupPath + name, "x");
    writeWholeFile(AppPath + "oben.reg", "x");
    const Wide backup = wide(BackupPath);
    const Texts listed{"*.reg", "..\\oben.reg", "????.reg"};
    const Wide names[] = {L"\uFF0A.reg", L"..\uFF3Coben.reg", L"\u041F\u0430\u043F\u043A.reg"};
    for (const Wide& name : names) writeWide(backup + name);
    const Texts before = filesIn(BackupPath, "*");
    for (const std::string& name : listed) {
        EXPECT_NE(std::find(before.begin(), before.end(), name), before.end()) << name;
        FileDel(BackupPath, name);
    }
    EXPECT_EQ(filesIn(BackupPath, "*"), before);
    EXPECT_TRUE(exists(AppPath + "oben.reg"));
    for (const Wide& name : names) takeAway(backup + name);
}

// Its age is that of the entry to which the short name leads.
TEST_F(ForeignNames, OfUndoFilesGoByTheirShortNamesWhenTheyAreOld) {
    makeFolderOnDisk(BackupPath);
    const Wide file = wide(BackupPath) + L"\uFF0A.reg";
    writeWide(file);
    writeWholeFile(BackupPath + "a.txt", "x");
    DelAfterDays = 0;
    AutoFileDel();
    EXPECT_TRUE(existsWide(file));
    DelAfterDays = -1;
    AutoFileDel();
    EXPECT_FALSE(takeAway(file));
    EXPECT_TRUE(exists(BackupPath + "a.txt"));
}

}  // namespace
}  // namespace bromvale::testing
