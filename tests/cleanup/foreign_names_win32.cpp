// Emptying and deleting on the real file system, where names hold characters that the program's code page
// lacks: what comes back for them separates folders or stands for many files.
#include <algorithm>
#include <cstdlib>

#include "cleanup/entry_names.h"
#include "cleanup/file_del.h"
#include "repair/backup_area.h"
#include "tests/cleanup/cleanup_fixture.h"

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
    // Where the shell of this system throws files; empty where it isn't known.
    static Wide bin() {
        const char* const data = std::getenv("XDG_DATA_HOME");
        if (data == nullptr) return {};
        Wide path = wide(std::string("Z:") + data + "/Trash/files/");
        for (wchar_t& c : path) {
            if (c == L'/') c = L'\\';
        }
        return path;
    }

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
        const Wide shortName = wide(foreignEntries(path_).at(0).shortName);
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
    if (bin().empty()) GTEST_SKIP() << "the place of the recycle bin isn't known here";
    EXPECT_TRUE(takeAway(bin() + below + L"\\" + kCyrillic + L"\\" + kStar));
    EXPECT_TRUE(takeAway(bin() + below + L"\\" + kCyrillic));
    EXPECT_TRUE(takeAway(bin() + below + L"\\" + kLeavesTheFolder));
    takeAway(bin() + below);
    // What the test has made and failed to see gone.
    takeAway(in(below) + L"\\" + kCyrillic + L"\\" + kStar);
    takeAway(in(below) + L"\\" + kCyrillic);
    takeAway(in(below) + L"\\" + kLeavesTheFolder);
}

TEST_F(ForeignNames, AreListedWithTheirShortNames) {
    writeWide(in(kStar));
    writeWholeFile(path_ + "Eine lange Datei.txt", "x");
    const auto entries = foreignEntries(path_);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].listedName, "*");
    EXPECT_TRUE(isPlainName(entries[0].shortName)) << entries[0].shortName;
    EXPECT_TRUE(exists(path_ + entries[0].shortName));
    takeAway(in(kStar));
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

// Nobody can tell how old such a file is.
TEST_F(ForeignNames, OfUndoFilesStayWhateverTheLimitOfDays) {
    DelAfterDays = -1;
    makeFolderOnDisk(BackupPath);
    writeWide(wide(BackupPath) + L"\uFF0A.reg");
    AutoFileDel();
    EXPECT_TRUE(takeAway(wide(BackupPath) + L"\uFF0A.reg"));
}

}  // namespace
}  // namespace bromvale::testing
