// A scan on a 64-bit Windows, by the program of either width: keys that both halves share name files of
// either.
#include "platform/offline/files/other_half.h"
#include "platform/offline/machine.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using offline::Halves;
using offline::machine;
using offline::setHalves;

class OtherViewScan : public ScanTest, public ::testing::WithParamInterface<Halves> {
  protected:
    OtherViewScan() {
        setHalves(Halves::SeenBy64);
        machine().drives.writeFile("C:\\WINDOWS\\SYSTEM32\\nur64.exe", "64");
        machine().drives.writeFile("C:\\WINDOWS\\SysWOW64\\nur32.exe", "32");
        setHalves(GetParam());
    }
    // Keys that are shared, each with sound neighbours, as first and last objects are judged with others.
    void appPath(const std::string& name, const std::string& path) {
        setString(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\" + name, "",
                  path);
    }
    void typeLib(const std::string& guid, const std::string& path) {
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\TypeLib\\" + guid + "\\1.0\\0\\win32", "", path);
    }
};

TEST_P(OtherViewScan, ASharedKeyIsDeadOnlyWhereNeitherHalfHasItsFile) {
    appPath("00.exe", "x");
    appPath("nur32.exe", "%SystemRoot%\\System32\\nur32.exe");
    appPath("nur64.exe", "%SystemRoot%\\System32\\nur64.exe");
    appPath("tot.exe", "%SystemRoot%\\System32\\tot.exe");
    appPath("zz.exe", "x");
    typeLib("{0}", "x");
    typeLib("{1}", "C:\\WINDOWS\\system32\\nur32.exe\\3");
    typeLib("{2}", "C:\\WINDOWS\\system32\\nur64.exe");
    typeLib("{3}", "C:\\WINDOWS\\system32\\tot.tlb");
    typeLib("{4}", "x");
    setString(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\zz",
              "UninstallString", "x");
    scan();
    Texts dead;
    for (const std::string& row : rows()) {
        if (row.find("| @ | C:") != std::string::npos || row.find("| @ | %") != std::string::npos)
            dead.push_back(row);
    }
    EXPECT_EQ(dead, (Texts{
                        "[HKEY_LOCAL_MACHINE\\Software\\Classes\\TypeLib\\{3}\\1.0\\0\\win32] | @ | "
                        "C:\\\\WINDOWS\\\\system32\\\\tot.tlb | -2147483646",
                        "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App "
                        "Paths\\tot.exe] | @ | %SystemRoot%\\\\System32\\\\tot.exe | -2147483646",
                    }));
}

INSTANTIATE_TEST_SUITE_P(Widths, OtherViewScan, ::testing::Values(Halves::SeenBy32, Halves::SeenBy64),
                         [](const auto& info) { return info.param == Halves::SeenBy32 ? "By32" : "By64"; });

}  // namespace
}  // namespace bromvale::testing
