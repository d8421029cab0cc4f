// Files whose names the code page can't hold: what is listed, what a path reaches, final and short paths.
#include <algorithm>

#include "platform/files.h"
#include "tests/contract/on_drives.h"
#include "tests/contract/unicode_machine.h"

namespace bromvale::testing {
namespace {

const WCHAR* wide(const std::u16string& text) {
    return reinterpret_cast<const WCHAR*>(text.c_str());
}

std::u16string textOf(const WCHAR* text) {
    return reinterpret_cast<const char16_t*>(text);
}

class UnicodeFiles : public OnDrives {
  protected:
    ~UnicodeFiles() override { removeWideThings(); }
    [[nodiscard]] std::u16string wideFolder() const { return {folder().begin(), folder().end()}; }
    static std::string foundA(const std::string& path) {
        WIN32_FIND_DATAA data{};
        const HANDLE search = FindFirstFileA(path.c_str(), &data);
        if (search == INVALID_HANDLE_VALUE) return "error " + std::to_string(GetLastError());
        FindClose(search);
        return data.cFileName;
    }
    static std::u16string foundW(const std::u16string& path) {
        WIN32_FIND_DATAW data{};
        const HANDLE search = FindFirstFileW(wide(path), &data);
        if (search == INVALID_HANDLE_VALUE) return u"error";
        FindClose(search);
        return textOf(data.cFileName);
    }
    // Without the two dots, in order.
    static std::vector<std::u16string> namesIn(const std::u16string& folder) {
        std::vector<std::u16string> names;
        WIN32_FIND_DATAW data{};
        const HANDLE search = FindFirstFileW(wide(folder + u"*"), &data);
        if (search == INVALID_HANDLE_VALUE) return names;
        do {
            if (data.cFileName[0] != '.') names.push_back(textOf(data.cFileName));
        } while (FindNextFileW(search, &data) != 0);
        EXPECT_EQ(GetLastError(), 18u);
        FindClose(search);
        std::sort(names.begin(), names.end());
        return names;
    }
    static std::u16string finalPathOf(const std::u16string& path) {
        const HANDLE file = CreateFileW(wide(path), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (file == INVALID_HANDLE_VALUE) return u"error";
        WCHAR buffer[MAX_PATH];
        const DWORD size = finalPathByHandle(file, buffer, MAX_PATH);
        EXPECT_EQ(finalPathByHandle(file, buffer, 3), size + 1) << "the size that is needed";
        CloseHandle(file);
        return textOf(buffer);
    }
};

BROMVALE_ON_DRIVES(UnicodeFiles);

TEST_P(UnicodeFiles, AListingGivesTheNearestLettersAndTheWideOneTheTruth) {
    for (const char16_t* name : {u"Zdj\u0119cie.txt", u"a\uFF3Cb.txt", u"\u0416.txt"})
        writeWideFile(wideFolder() + name, "x");
    EXPECT_EQ(filesIn(folder(), "*"), (std::vector<std::string>{"?.txt", "Zdjecie.txt", "a\\b.txt"}));
    EXPECT_EQ(namesIn(wideFolder()),
              (std::vector<std::u16string>{u"Zdj\u0119cie.txt", u"a\uFF3Cb.txt", u"\u0416.txt"}));
}

TEST_P(UnicodeFiles, AnAnsiPathReachesOnlyWhatItNamesExactly) {
    writeWideFile(wideFolder() + u"\u0142ap.exe", "x");
    EXPECT_EQ(foundA(folder() + "lap.exe"), "error 2");
    EXPECT_EQ(foundW(wideFolder() + u"\u0142ap.exe"), u"\u0142ap.exe");
    EXPECT_EQ(foundW(wideFolder() + u"\u0141AP.EXE"), u"\u0142ap.exe");
    EXPECT_EQ(foundA(folder() + "?ap.exe"), "lap.exe") << "a mask stands for any letter";
    writeWideFile(wideFolder() + u"lap.exe", "x");
    EXPECT_EQ(foundA(folder() + "LAP.exe"), "lap.exe");
    EXPECT_EQ(foundW(wideFolder() + u"lap.exe"), u"lap.exe");
}

TEST_P(UnicodeFiles, WideSeparatorsAndDotsAreLettersOfAName) {
    makeWideFolder(wideFolder() + u"\uFF0E\uFF0E");
    writeWideFile(wideFolder() + u"\uFF0E\uFF0E\\a\uFF0Fb", "x");
    writeWideFile(wideFolder() + u"c\u2024", "x");
    EXPECT_EQ(foundW(wideFolder() + u"\uFF0E\uFF0E\\a\uFF0Fb"), u"a\uFF0Fb");
    EXPECT_EQ(foundW(wideFolder() + u"c\u2024"), u"c\u2024");
    EXPECT_EQ(foundW(wideFolder() + u"c"), u"error");
    EXPECT_EQ(namesIn(wideFolder() + u"\uFF0E\uFF0E\\"), std::vector<std::u16string>{u"a\uFF0Fb"});
}

TEST_P(UnicodeFiles, AHandleTellsTheWholePath) {
    makeWideFolder(wideFolder() + u"Zdj\u0119cia");
    writeWideFile(wideFolder() + u"Zdj\u0119cia\\a.txt", "x");
    const std::u16string folderPath = u"\\\\?\\" + wideFolder() + u"Zdj\u0119cia";
    EXPECT_EQ(finalPathOf(wideFolder() + u"Zdj\u0119cia"), folderPath);
    EXPECT_EQ(finalPathOf(wideFolder() + u"Zdj\u0119cia\\"), folderPath);
    EXPECT_EQ(finalPathOf(wideFolder() + u"ZDJ\u0118CIA\\A.TXT"), folderPath + u"\\a.txt");
    EXPECT_EQ(finalPathOf(wideFolder() + u"Zdjecia"), u"error");
}

TEST_P(UnicodeFiles, AFolderIsOpenedOnlyWhereThatIsAskedFor) {
    makeFolderOnDisk(folder() + "Ordner");
    SetLastError(0);
    const HANDLE file =
        CreateFileW(wide(wideFolder() + u"Ordner"), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), 5u);
}

TEST_P(UnicodeFiles, AShortNameIsFoundAndLeadsToItsEntry) {
    switchShortNamesOn();
    for (const char16_t* name :
         {u"Zdj\u0119cie eins.text", u"Zdj\u0119cie zwei.text", u"Ein langer Name.txt"}) {
        const std::u16string path = wideFolder() + name;
        writeWideFile(path, "x");
        WCHAR buffer[MAX_PATH];
        const DWORD size = GetShortPathNameW(wide(path), buffer, MAX_PATH);
        ASSERT_GT(size, 0u);
        const std::u16string shortPath = textOf(buffer);
        EXPECT_EQ(shortPath.size(), size);
        EXPECT_NE(shortPath, path);
        EXPECT_EQ(foundW(shortPath), name);
        EXPECT_EQ(GetShortPathNameW(wide(path), buffer, size), size + 1) << "the size that is needed";
        const std::string ansi(shortPath.begin(), shortPath.end());
        EXPECT_NE(DeleteFileA(ansi.c_str()), 0);
        EXPECT_EQ(foundW(path), u"error");
    }
}

}  // namespace
}  // namespace bromvale::testing
