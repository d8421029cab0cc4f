// Drives with real names: links, short names, paths that stand for themselves, other code pages, the 9x
// family.
#include <array>
#include <filesystem>
#include <fstream>

#include "platform/files.h"
#include "platform/folder_dialog.h"
#include "platform/machine.h"
#include "platform/offline/machine.h"
#include "platform/registry.h"
#include "tests/support/host_folder_offline.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::machine;
namespace fs = std::filesystem;

struct Found {
    std::u16string name;
    std::u16string shortName;
    DWORD attributes = 0;
    bool operator==(const Found&) const = default;
};

class UnicodeDrive : public TestMachine {
  protected:
    UnicodeDrive() {
        fs::create_directory(top_ / "d");
        machine().drives.addFolder('D', (top_ / "d").string());
    }
    static std::vector<Found> list(const std::u16string& mask) {
        std::vector<Found> result;
        WIN32_FIND_DATAW data{};
        const HANDLE search = FindFirstFileW(mask.c_str(), &data);
        if (search == INVALID_HANDLE_VALUE) return result;
        do {
            if (data.cFileName != std::u16string_view(u".") && data.cFileName != std::u16string_view(u".."))
                result.push_back({data.cFileName, data.cAlternateFileName, data.dwFileAttributes});
        } while (FindNextFileW(search, &data) != 0);
        FindClose(search);
        return result;
    }
    static std::vector<std::u16string> namesIn(const std::u16string& folder) {
        std::vector<std::u16string> names;
        for (const Found& found : list(folder + u"\\*")) names.push_back(found.name);
        return names;
    }
    static std::u16string finalPathOf(const std::u16string& path, DWORD flags = 0) {
        const HANDLE file = CreateFileW(path.c_str(), 0, 0, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
        if (file == INVALID_HANDLE_VALUE) return u"error";
        WCHAR buffer[MAX_PATH] = {};
        GetFinalPathNameByHandleW(file, buffer, MAX_PATH, 0);
        CloseHandle(file);
        return buffer;
    }
    using Names = std::vector<std::u16string>;
    const HostFolder host_;
    const fs::path& top_ = host_.path();
};

TEST_F(UnicodeDrive, ADanglingLinkIsListedAsALinkAndGoesAsOne) {
    fs::create_directory(top_ / "d" / "leer");
    fs::create_symlink("fehlt", top_ / "d" / "leer" / "Verweis");
    const std::vector<Found> found = list(u"D:\\leer\\*");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0], (Found{u"Verweis", u"", FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT}));
    EXPECT_EQ(RemoveDirectoryA("D:\\leer"), FALSE);
    EXPECT_EQ(GetLastError(), 145u);
    EXPECT_EQ(CreateFileA("D:\\leer\\verweis", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), 2u);
    EXPECT_NE(DeleteFileA("D:\\leer\\verweis"), 0);
    EXPECT_TRUE(fs::is_empty(top_ / "d" / "leer"));
}

TEST_F(UnicodeDrive, AShortPathEndsAsThePathDoes) {
    machine().drives.makeFolder(u"C:\\Ordner");
    const auto shortOf = [](const char16_t* path) {
        WCHAR buffer[64] = {};
        const DWORD size = GetShortPathNameW(path, buffer, 64);
        return std::u16string(buffer, size);
    };
    EXPECT_EQ(shortOf(u"C:\\"), u"C:\\");
    EXPECT_EQ(shortOf(u"C:\\Ordner"), u"C:\\Ordner");
    EXPECT_EQ(shortOf(u"C:\\Ordner\\"), u"C:\\Ordner\\");
}

TEST_F(UnicodeDrive, ALinkOfTheHostLeadsToItsTargetWhereverThatLies) {
    fs::create_directories(top_ / "d" / "Ziel" / "unten");
    fs::create_directories(top_ / "draussen");
    fs::create_directory_symlink(top_ / "d" / "Ziel", top_ / "d" / "Verweis");
    fs::create_directory_symlink(top_ / "draussen", top_ / "d" / "hinaus");
    EXPECT_EQ(finalPathOf(u"D:\\verweis\\unten"), u"\\\\?\\D:\\Ziel\\unten");
    EXPECT_EQ(finalPathOf(u"D:\\verweis"), u"\\\\?\\D:\\Ziel");
    EXPECT_EQ(finalPathOf(u"D:\\verweis", FILE_FLAG_OPEN_REPARSE_POINT), u"\\\\?\\D:\\Verweis");
    std::u16string outside = fs::canonical(top_ / "draussen").u16string();
    std::replace(outside.begin(), outside.end(), u'/', u'\\');
    EXPECT_EQ(finalPathOf(u"D:\\hinaus"), u"\\\\?\\UNC\\host" + outside);
}

TEST_F(UnicodeDrive, ALinkInMemoryShowsItsTargetAndGoesAlone) {
    auto& drives = machine().drives;
    drives.addMemory('E');
    drives.writeFile(u"E:\\Ziel\\a.txt", "x");
    ASSERT_TRUE(drives.linkFolder(u"C:\\Zdj\u0119cia\\Verweis", u"E:\\Ziel") == false) << "no folder above";
    drives.makeFolder(u"C:\\Zdj\u0119cia");
    ASSERT_TRUE(drives.linkFolder(u"C:\\Zdj\u0119cia\\Verweis", u"E:\\Ziel"));
    ASSERT_TRUE(drives.linkFolder(u"C:\\Zdj\u0119cia\\ins Leere", u"E:\\fehlt"));
    const DWORD link = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    EXPECT_EQ(list(u"C:\\Zdj\u0119cia\\*"),
              (std::vector<Found>{{u"ins Leere", u"", link}, {u"Verweis", u"", link}}));
    EXPECT_EQ(namesIn(u"C:\\Zdj\u0119cia\\Verweis"), Names{u"a.txt"});
    EXPECT_EQ(namesIn(u"C:\\Zdj\u0119cia\\ins Leere"), Names{});
    EXPECT_EQ(finalPathOf(u"C:\\Zdj\u0119cia\\verweis\\A.TXT"), u"\\\\?\\E:\\Ziel\\a.txt");
    EXPECT_EQ(finalPathOf(u"C:\\Zdj\u0119cia\\verweis"), u"\\\\?\\E:\\Ziel");
    EXPECT_EQ(finalPathOf(u"C:\\Zdj\u0119cia\\verweis", FILE_FLAG_OPEN_REPARSE_POINT),
              u"\\\\?\\C:\\Zdj\u0119cia\\Verweis");
    EXPECT_EQ(finalPathOf(u"C:\\Zdj\u0119cia\\ins Leere"), u"error");
    EXPECT_TRUE(drives.erase(u"C:\\Zdj\u0119cia\\Verweis"));
    EXPECT_TRUE(drives.exists("E:\\Ziel\\a.txt"));
    drives.linkFolder(u"C:\\kreis", u"C:\\kreis");
    EXPECT_FALSE(drives.exists("C:\\kreis\\a")) << "ends, too";
}

TEST_F(UnicodeDrive, ShortNamesAreMadeAsWindowsMakesThemAndStay) {
    auto& drives = machine().drives;
    drives.shortNames = true;
    for (const char16_t* name : {u"Langer Name.text", u"Langer Nachname.text", u"KURZ.TXT", u"kurz.txtx",
                                 u"a+b.c", u"Zdj\u0119cie.txt", u"\u00DCbersicht 1.doc", u"LANGER~3.TEX"}) {
        ASSERT_TRUE(drives.writeFile(std::u16string(u"C:\\Namen\\") + name, "x"));
    }
    const auto shortNameOf = [](const std::u16string& name) {
        return list(u"C:\\Namen\\" + name).at(0).shortName;
    };
    EXPECT_EQ(shortNameOf(u"Langer Name.text"), u"LANGER~1.TEX");
    EXPECT_EQ(shortNameOf(u"Langer Nachname.text"), u"LANGER~2.TEX");
    EXPECT_EQ(shortNameOf(u"KURZ.TXT"), u"");
    EXPECT_EQ(shortNameOf(u"kurz.txtx"), u"KURZ~1.TXT");
    EXPECT_EQ(shortNameOf(u"a+b.c"), u"A_B~1.C");
    EXPECT_EQ(shortNameOf(u"\u00DCbersicht 1.doc"), u"\u00DCBERSI~1.DOC");
    const std::u16string hash = shortNameOf(u"Zdj\u0119cie.txt");
    EXPECT_EQ(hash, u"VYWBMA~1.TXT");
    EXPECT_TRUE(drives.erase(u"C:\\Namen\\LANGER~1.tex"));
    EXPECT_FALSE(drives.exists("C:\\Namen\\Langer Name.text"));
    EXPECT_EQ(shortNameOf(u"Langer Nachname.text"), u"LANGER~2.TEX");
    drives.writeFile("C:\\Namen\\Langer Dritter.text", "x");
    EXPECT_EQ(shortNameOf(u"Langer Dritter.text"), u"LANGER~1.TEX");
    drives.writeFile("C:\\Namen\\Langer Vierter.text", "x");
    EXPECT_EQ(shortNameOf(u"Langer Vierter.text"), u"LANGER~4.TEX") << "the third is somebody's own name";
    drives.shortNames = false;
    EXPECT_FALSE(drives.exists("C:\\Namen\\LANGER~1.TEX"));
}

// Six of 32 letters, by the whole name.
TEST_F(UnicodeDrive, NamesBeyondTheCodePageHaveAHash) {
    auto& drives = machine().drives;
    drives.shortNames = true;
    std::u16string hashes;
    for (char16_t letter = 0x0100; letter < 0x0130; letter += 2) {
        const std::u16string path = std::u16string(u"C:\\Namen\\") + letter + u"\u0119";
        ASSERT_TRUE(drives.writeFile(path, "x"));
        const std::u16string name = list(path).at(0).shortName;
        EXPECT_EQ(name.size(), 8u);
        EXPECT_EQ(name.substr(6), u"~1");
        hashes += name.substr(0, 6) + u" ";
    }
    EXPECT_EQ(
        hashes,
        u"KOSSYB UEK33S OUJTMZ YU6UPK S37X7V 4VE3WH WRCPEL AWEL34 276WF3 EYY3IM 6DLZFS IWWPNB CNM4MP MBY6DB "
        u"G5VSRE QHRPIW KBHUNR UDHUED O7EISG YTQKJY S2RNZD 4ENKQV WQ7HN3 AJZMQM ");
}

// Windows shows what it allows in no name as characters beyond all code pages.
TEST_F(UnicodeDrive, SignsThatOnlyTheHostAllowsLieBeyondTheCodePages) {
    const std::string signs = "\\:*?\"<>|";
    std::string all;
    std::u16string shown;
    for (const char sign : signs) {
        std::ofstream(top_ / "d" / (std::string("x") + sign)) << sign;
        shown = u"x" + std::u16string(1, static_cast<char16_t>(0xF000 + sign));
        EXPECT_EQ(list(u"D:\\" + shown).at(0).name, shown) << sign;
        EXPECT_EQ(machine().drives.readFile(u"D:\\" + shown).value_or("none"), std::string(1, sign));
    }
    std::ofstream(top_ / "d" / "y;+") << "x";
    EXPECT_EQ(list(u"D:\\y*").at(0).name, u"y;+");
}

TEST_F(UnicodeDrive, ShortNamesHaveALineForEachSignThatTheyMustNotHold) {
    auto& drives = machine().drives;
    drives.shortNames = true;
    const std::array<std::pair<const char16_t*, const char16_t*>, 7> names{{{u"a+1.c", u"A_1~1.C"},
                                                                            {u"b,2.c", u"B_2~1.C"},
                                                                            {u"d;3.c", u"D_3~1.C"},
                                                                            {u"e=4.c", u"E_4~1.C"},
                                                                            {u"f[5.c", u"F_5~1.C"},
                                                                            {u"g]6.c", u"G_6~1.C"},
                                                                            {u"h#7.c", u""}}};
    for (const auto& [name, shortName] : names) {
        const std::u16string path = std::u16string(u"C:\\Namen\\") + name;
        ASSERT_TRUE(drives.writeFile(path, "x"));
        EXPECT_EQ(list(path).at(0).shortName, shortName);
    }
}

TEST_F(UnicodeDrive, ShortNamesOfTheHostFollowTheSwitch) {
    std::ofstream(top_ / "d" / "Langer Name.text") << "x";
    std::ofstream(top_ / "d" /
                  "Zdj\xC4\x99"
                  "cie.txt")
        << "x";
    EXPECT_EQ(list(u"D:\\L*")[0].shortName, u"");
    EXPECT_EQ(list(u"D:\\Z*")[0].shortName.substr(6), u"~1.TXT");
    machine().drives.shortNames = true;
    EXPECT_EQ(list(u"D:\\L*")[0].shortName, u"LANGER~1.TEX");
    EXPECT_TRUE(machine().drives.exists("D:\\langer~1.tex"));
    machine().drives.shortNames = false;
    EXPECT_EQ(list(u"D:\\Z*")[0].shortName, u"");
}

TEST_F(UnicodeDrive, APathThatStandsForItselfKeepsDotsAndBlanks) {
    auto& drives = machine().drives;
    drives.makeFolder("C:\\Leeren");
    ASSERT_TRUE(drives.writeFile(u"\\\\?\\C:\\Leeren\\Daten.", "x"));
    ASSERT_TRUE(drives.makeFolder(u"\\\\?\\C:\\Leeren\\t "));
    EXPECT_EQ(namesIn(u"C:\\Leeren"), (Names{u"Daten.", u"t "}));
    EXPECT_FALSE(drives.exists("C:\\Leeren\\Daten."));
    EXPECT_TRUE(drives.exists(u"\\\\?\\C:\\Leeren\\Daten."));
    EXPECT_NE(DeleteFileA("\\\\?\\C:\\Leeren\\Daten."), 0);
    drives.addShare("Server", "Freigabe");
    drives.writeFile("\\\\Server\\Freigabe\\a.txt", "x");
    EXPECT_TRUE(drives.exists(u"\\\\?\\UNC\\server\\freigabe\\a.txt"));
    EXPECT_EQ(finalPathOf(u"\\\\Server\\Freigabe\\A.txt"), u"\\\\?\\UNC\\Server\\Freigabe\\a.txt");
}

TEST_F(UnicodeDrive, OtherCodePagesAreTheirOwn) {
    auto& drives = machine().drives;
    for (const char16_t* name : {u"Zdj\u0119cie.txt", u"\u8868.txt"})
        drives.writeFile(std::u16string(u"C:\\Namen\\") + name, "x");
    machine().textRules.codePage = 1250;
    EXPECT_EQ(filesIn("C:\\Namen\\", "*"), (std::vector<std::string>{"?.txt",
                                                                     "Zdj\xEA"
                                                                     "cie.txt"}));
    EXPECT_EQ(GetFileAttributesA("C:\\Namen\\ZDJ\xCA"
                                 "CIE.TXT"),
              static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE));
    machine().textRules.codePage = 932;
    EXPECT_EQ(filesIn("C:\\Namen\\", "*"), (std::vector<std::string>{"Zdj?cie.txt", "\x95\x5C.txt"}));
    EXPECT_EQ(GetFileAttributesA("C:\\Namen\\\x95\x5C.txt"), static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE));
    machine().textRules.codePage = 65001;
    EXPECT_EQ(filesIn("C:\\Namen\\", "*"), (std::vector<std::string>{"Zdj\xC4\x99"
                                                                     "cie.txt",
                                                                     "\xE8\xA1\xA8.txt"}));
    drives.writeFile(u"C:\\Namen\\" + std::u16string(200, u'\u0416'), "x");
    WIN32_FIND_DATAA data{};
    EXPECT_EQ(FindFirstFileA("C:\\Namen\\\xD0\x96*", &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), 234u) << "400 bytes";
    machine().textRules.codePage = 1252;
}

// As Windows itself does with the files of other systems.
TEST_F(UnicodeDrive, WhatWindowsAllowsInNoNameStandsBeyondAllCodePages) {
    std::ofstream(top_ / "d" / "a:b?\"<c>|*\\") << "x";
    const Names names{u"a\uF03Ab\uF03F\uF022\uF03Cc\uF03E\uF07C\uF02A\uF05C"};
    EXPECT_EQ(namesIn(u"D:"), names);
    EXPECT_EQ(finalPathOf(u"D:\\" + names[0]), u"\\\\?\\D:\\" + names[0]);
}

TEST_F(UnicodeDrive, AShortPathKeepsThePrefixOfALiteralOne) {
    machine().drives.shortNames = true;
    machine().drives.writeFile(u"C:\\Ein langer Name.txt", "x");
    WCHAR path[MAX_PATH] = {};
    EXPECT_EQ(GetShortPathNameW(u"\\\\?\\C:\\Ein langer Name.txt", path, MAX_PATH), 19u);
    EXPECT_EQ(std::u16string(path), u"\\\\?\\C:\\EINLAN~1.TXT");
    EXPECT_EQ(GetShortPathNameW(u"C:\\Ein langer Name.txt", path, MAX_PATH), 15u);
    EXPECT_EQ(std::u16string(path), u"C:\\EINLAN~1.TXT");
}

TEST_F(UnicodeDrive, BytesWithoutACharacterAreToldWhereThatIsAsked) {
    machine().textRules.codePage = 932;
    WCHAR wide[4] = {};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, "\x81\xAD", 2, wide, 4), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\x81\xAD", 2, wide, 4), 1);
    EXPECT_EQ(wide[0], u'\u30FB');
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, "\x82\xA0", 2, wide, 4), 1);
    EXPECT_EQ(wide[0], u'\u3042');
    // At the edges of what begins a pair; the signs of three of them are none of the offline page.
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\x81\x41\x9F\xFC\xE0\x40\xFC\x4B", 8, wide, 4), 4);
    EXPECT_EQ(std::u16string(wide, 4), u"\u3001\u30FB\u30FB\u30FB");
    machine().textRules.codePage = 1252;
}

TEST_F(UnicodeDrive, TheProgramLiesWhereItIsToldTo) {
    machine().drives.shortNames = true;
    machine().setAppPath(u"C:\\Paw\u0142owski\\Bromvale");
    WCHAR path[MAX_PATH];
    char ansi[MAX_PATH];
    EXPECT_EQ(GetModuleFileNameW(nullptr, path, MAX_PATH), 34u);
    EXPECT_EQ(std::u16string(path), u"C:\\Paw\u0142owski\\Bromvale\\Bromvale.exe");
    GetModuleFileNameA(nullptr, ansi, MAX_PATH);
    EXPECT_STREQ(ansi, "C:\\Pawlowski\\Bromvale\\Bromvale.exe");
    EXPECT_EQ(GetModuleFileNameW(nullptr, path, 5), 5u);
    EXPECT_EQ(std::u16string(path), u"C:\\P");
    EXPECT_FALSE(machine().drives.exists("C:\\Pawlowski"));
    EXPECT_TRUE(machine().drives.exists(u"C:\\PAW\u0141OWSKI\\Bromvale"));
}

TEST_F(UnicodeDrive, TheFolderDialogGivesBothForms) {
    machine().folders = {u"C:\\Zdj\u0119cia"};
    BROWSEINFOA info{};
    const PIDLIST_ABSOLUTE list = SHBrowseForFolderA(&info);
    char ansi[MAX_PATH];
    WCHAR wide[MAX_PATH];
    EXPECT_NE(SHGetPathFromIDListA(list, ansi), 0);
    EXPECT_NE(SHGetPathFromIDListW(list, wide), 0);
    CoTaskMemFree(list);
    EXPECT_STREQ(ansi, "C:\\Zdjecia");
    EXPECT_EQ(std::u16string(wide), u"C:\\Zdj\u0119cia");
}

TEST_F(UnicodeDrive, The9xFamilyHasNoWideFunctions) {
    machine().setOs(*offline::osByName("Windows 98"));
    machine().drives.writeFile(u"C:\\\u0142ap\u0416.exe", "x");
    std::ofstream(top_ / "d" /
                  "Zdj\xC4\x99"
                  "cie.txt")
        << "x";
    EXPECT_TRUE(machine().drives.exists("C:\\lap_.exe"));
    EXPECT_EQ(filesIn("D:\\", "*"), std::vector<std::string>{"Zdjecie.txt"});
    EXPECT_TRUE(machine().drives.exists("D:\\zdjecie.txt"));
    WIN32_FIND_DATAW data{};
    SetLastError(0);
    EXPECT_EQ(FindFirstFileW(u"C:\\lap_.exe", &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), 120u);
    WCHAR path[MAX_PATH];
    EXPECT_EQ(GetModuleFileNameW(nullptr, path, MAX_PATH), 0u);
    EXPECT_EQ(ExpandEnvironmentStringsW(u"%windir%", path, MAX_PATH), 0u);
    EXPECT_EQ(GetShortPathNameW(u"D:\\", path, MAX_PATH), 0u);
    EXPECT_EQ(GetWindowsDirectoryW(path, MAX_PATH), 0u);
    EXPECT_EQ(FindNextFileW(nullptr, &data), 0);
    EXPECT_EQ(CreateFileW(u"D:\\zdjecie.txt", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetFinalPathNameByHandleW(nullptr, path, MAX_PATH, 0), 0u);
    EXPECT_EQ(SHGetPathFromIDListW(nullptr, path), 0);
    EXPECT_EQ(GetLastError(), 120u);
}

TEST_F(UnicodeDrive, WideCallsShareTheFaultPointsOfTheirBrothers) {
    WIN32_FIND_DATAW data{};
    machine().faults.fail("FindFirstFileA", 1, 5);
    EXPECT_EQ(FindFirstFileW(u"C:\\*", &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), 5u);
    machine().faults.fail("RegEnumKeyA", 1, 234);
    WCHAR name[16];
    DWORD size = 16;
    EXPECT_EQ(RegEnumKeyExW(HKEY_LOCAL_MACHINE, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 234);
}

}  // namespace
}  // namespace bromvale::testing
