// What a look from outside can't reach is not judged: a rescue must not take it for a dead program.
#include <unistd.h>

#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;
using offline::keyAt;

// A disk with a class for each path, between two that are there.
class NotAtHand : public RescueTest {
  protected:
    void makeDiskWith(const std::vector<std::u16string>& libraries) {
        offline::DiskPlan plan;
        plan.generation = Generation::Seven;
        plan.software = [&libraries](offline::MadeHive& software) {
            offline::MadeKey& clsid = keyAt(software.root, u"Classes\\CLSID");
            addClass(clsid, classOf(u'0'), u"C:\\bootmgr");
            char16_t sign = u'A';
            for (const std::u16string& library : libraries) addClass(clsid, classOf(sign++), library);
            addClass(clsid, classOf(u'Z'), u"C:\\bootmgr");
        };
        offline::makeDisk(disk(), plan);
        offline::writeFile(disk() / "bootmgr", "x");
    }
    // The signs of the classes that are judged to be dead, and the number of those that are not judged.
    std::string judged() {
        const Outcome outcome = onDisk({"--user", "all", "--report", "json", "-"});
        EXPECT_EQ(0, outcome.status) << outcome.err;
        std::string dead;
        const std::string inName = "-dead-00000000000";
        for (std::size_t at = 0; (at = outcome.out.find(inName, at)) != std::string::npos; ++at) {
            const char sign = outcome.out[at + inName.size()];
            if (!dead.ends_with(sign)) dead += sign;
        }
        const std::string word = "\"elsewhere\": ";
        const std::size_t at = outcome.out.find(word);
        return dead + " " + (at == std::string::npos ? "?" : outcome.out.substr(at + word.size(), 2));
    }

  private:
    static std::u16string classOf(char16_t sign) {
        return u"{00000000-0000-0000-dead-00000000000" + std::u16string(1, sign) + u"}";
    }
};

TEST_F(NotAtHand, OtherDrivesSharesAndDevices) {
    makeDiskWith({
        u"D:\\weg.dll",
        u"Z:\\werkzeug\\weg.dll",
        u"\\\\server\\freigabe\\weg.dll",
        u"\\\\?\\UNC\\server\\freigabe\\weg.dll",
        u"\\\\?\\Volume{11111111-2222-3333-4444-555555555555}\\weg.dll",
        u"\\\\?\\GLOBALROOT\\Device\\HarddiskVolume3\\weg.dll",
        u"\\\\.\\GLOBALROOT\\Device\\HarddiskVolume3\\weg.dll",
        u"\\\\?\\Q:\\weg.dll",
        u"\\\\?\\C:\\weg.dll",
        u"C:\\weg.dll",
    });
    EXPECT_EQ("IJ 8,", judged());
}

TEST_F(NotAtHand, BehindLinksThatLeadOut) {
    const std::vector<std::string> targets{"/nicht/da",         "D:/Spiele",
                                           "\\?\?\\D:\\Spiele", "..",
                                           "../../draussen",    "unsupported reparse tag 0x9000601a",
                                           "C:/Gibt es nicht"};
    std::vector<std::u16string> libraries;
    for (std::size_t i = 0; i < targets.size(); ++i)
        libraries.push_back(u"C:\\Spiele" + std::u16string(1, static_cast<char16_t>(u'0' + i)) +
                            u"\\Ordner\\weg.dll");
    makeDiskWith(libraries);
    for (std::size_t i = 0; i < targets.size(); ++i)
        std::filesystem::create_symlink(targets[i], disk() / ("Spiele" + std::to_string(i)));
    EXPECT_EQ("G 6,", judged());
}

// The mount may show long names alone.
TEST_F(NotAtHand, ShortNames) {
    makeDiskWith({
        u"C:\\PROGRA~1\\Werk\\weg.dll",
        u"C:\\Kurz\\LA2F41~1.DLL",
        u"C:\\Kurz\\ANDERE~1.DLL",
        u"C:\\Kurz\\LANG~A.DLL",
        u"C:\\Leer\\LANGER~1.DLL",
    });
    std::filesystem::create_directories(disk() / "leer");
    std::filesystem::create_directories(disk() / "Program Files");
    offline::writeFile(disk() / "Kurz" / "Langer Name.dll", "x");
    offline::writeFile(disk() / "Kurz" / "ANDERES.DLL", "x");
    EXPECT_EQ("CDE 2,", judged());
}

TEST_F(NotAtHand, WhatTheHostDoesNotLetLookInto) {
    // The host's names are shorter than those of Windows.
    makeDiskWith({u"C:\\" + std::u16string(200, u'\u00FC') + u"\\weg.dll", u"C:\\Zu\\weg.dll"});
    const std::filesystem::path closed = disk() / "Zu";
    std::filesystem::create_directories(closed);
    std::filesystem::permissions(closed, std::filesystem::perms::none);
    EXPECT_EQ(::geteuid() == 0 ? "B 1," : " 2,", judged());
    std::filesystem::permissions(closed, std::filesystem::perms::owner_all);
}

// Written with dots, blanks and slashes as Windows takes them, in any case.
TEST_F(NotAtHand, OtherWaysToWriteAreTheSameFile) {
    makeDiskWith({u"C:\\da\\DA.dll", u"\"C:\\Da\\da.dll\"", u"C:\\Da\\.\\x\\..\\da.dll",
                  u"\\\\?\\C:\\Da\\da.dll", u"C:\\Da\\\\da.dll", u"\\?\?\\C:\\Da\\da.dll", u"C:\\Da.\\da.dll",
                  u"C:\\Da/da.dll"});
    offline::writeFile(disk() / "Da" / "Da.dll", "x");
    EXPECT_EQ(" 0,", judged());
}

}  // namespace
}  // namespace bromvale::testing
