// Reports of small machines, byte for byte.
#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;
using offline::keyAt;
using offline::MadeHive;
using offline::textValue;

const std::string kUser = "J\xC3\xBCrgen Gro\xC3\x9F";
const std::string kSecondUser = "\xC5\x81ukasz";
const std::string kEntries = " Eintr\xC3\xA4gen = ";
const std::string kOwnClass =
    "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000002}";
const std::string kClass =
    "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000002}";
const std::string kPaths = "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

std::string withDoubledBackslashes(const std::string& text) {
    std::string result;
    for (const char c : text) result.append(c == '\\' ? 2 : 1, c);
    return result;
}

class ReportText : public RescueTest {
  protected:
    // A user's class, a program of both views and a class of the narrow one are dead, and a program lies
    // elsewhere.
    offline::MadeDisk makeSmallDisk() {
        offline::DiskPlan plan;
        plan.generation = Generation::SevenX64;
        plan.software = [](MadeHive& software) {
            addProgram(software, u"a.exe", u"C:\\bootmgr");
            addProgram(software, u"b \"c\".exe", u"C:\\W\te,\x1B.exe");
            addProgram(software, u"d.exe", u"D:\\d.exe");
            addProgram(software, u"e.exe", u"C:\\bootmgr");
            addThree(keyAt(software.root, u"Classes\\Wow6432Node\\CLSID"), u"C:\\Weg\\schmal.dll");
        };
        plan.classes = [](MadeHive& own, std::size_t number) {
            if (number == 0) addThree(keyAt(own.root, u"CLSID"), u"C:\\Weg\\eigen.dll");
        };
        offline::writeFile(disk() / "bootmgr", "x");
        return offline::makeDisk(disk(), plan);
    }
    std::string report(const char* form) {
        const Outcome outcome = onDisk({"--user", "all", "--view", "both", "--report", form, "-"});
        EXPECT_EQ(0, outcome.status);
        return outcome.out;
    }

  private:
    static void addThree(offline::MadeKey& clsid, std::u16string_view library) {
        addClass(clsid, u"{00000000-0000-0000-0000-000000000001}", u"C:\\bootmgr");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000002}", library);
        addClass(clsid, u"{00000000-0000-0000-0000-000000000003}", u"C:\\bootmgr");
    }
};

TEST_F(ReportText, ForPeople) {
    static_cast<void>(makeSmallDisk());
    const std::string many = " view: Sehr viele Fehler gefunden. (";
    EXPECT_EQ(
        "Windows 7 Ultimate, 6.1.7601, 64-bit\n"
        "user " +
            kUser + ", 64-bit" + many + "3 von 19" + kEntries +
            "15,79%)\n"
            "user " +
            kSecondUser + ", 64-bit" + many + "1 von 13" + kEntries +
            "7,69%)\n"
            "user " +
            kUser + ", 32-bit" + many + "3 von 19" + kEntries +
            "15,79%)\n"
            "user " +
            kSecondUser + ", 32-bit" + many + "3 von 19" + kEntries +
            "15,79%)\n"
            "\n1  missing file, 64-bit view, user " +
            kUser + "\n    " + kOwnClass +
            "\\InprocServer32\n"
            "    (default) = C:\\Weg\\eigen.dll\n    looked for: c:\\weg\\eigen.dll\n"
            "\n2  missing file, 64-bit view, user " +
            kUser + "\n    " + kOwnClass +
            "\n"
            "    (default) = \n    looked for: c:\\weg\\eigen.dll\n"
            "\n3  missing file, 64-bit view\n    " +
            kPaths +
            "b \"c\".exe\n"
            "    (default) = C:\\W\\x09e,\\x1B.exe\n    looked for: c:\\w\\x09e,\\x1B.exe\n"
            "\n4  missing file, 32-bit view\n    " +
            kClass +
            "\\InprocServer32\n"
            "    (default) = C:\\Weg\\schmal.dll\n    looked for: c:\\weg\\schmal.dll\n"
            "\n5  missing file, 32-bit view\n    " +
            kClass +
            "\n"
            "    (default) = \n    looked for: c:\\weg\\schmal.dll\n"
            "\n1 Eintrag auf Laufwerken, die nicht da sind\n",
        report("text"));
}

TEST_F(ReportText, AsCsv) {
    const offline::MadeDisk made = makeSmallDisk();
    const std::string missing = "\"missing file\",\"the file that the value names is not there\",";
    const std::string own = missing + "\"c:\\weg\\eigen.dll\",\"" + kUser + "\",\"64\",\"" +
                            made.users[0].classes.string() + "\"\r\n";
    const std::string software = ",\"" + made.software.string() + "\"\r\n";
    const std::string narrow = missing + "\"c:\\weg\\schmal.dll\",\"\",\"32\"" + software;
    EXPECT_EQ(
        "number,key,name,data,kind,reason,file,user,view,hive\r\n"
        "1,\"" +
            kOwnClass + "\\InprocServer32\",\"\",\"C:\\Weg\\eigen.dll\"," + own + "2,\"" + kOwnClass +
            "\",\"\",\"\"," + own + "3,\"" + kPaths + "b \"\"c\"\".exe\",\"\",\"C:\\W\te,\\x1B.exe\"," +
            missing + "\"c:\\w\te,\\x1B.exe\",\"\",\"64\"" + software + "4,\"" + kClass +
            "\\InprocServer32\",\"\",\"C:\\Weg\\schmal.dll\"," + narrow + "5,\"" + kClass + "\",\"\",\"\"," +
            narrow,
        report("csv"));
}

TEST_F(ReportText, AsJson) {
    const offline::MadeDisk made = makeSmallDisk();
    const std::string missing =
        "\", \"kind\": \"missing file\", \"reason\": \"the file that the value names is not there\", "
        "\"file\": \"c:";
    const std::string own = missing + "\\\\weg\\\\eigen.dll\", \"user\": \"" + kUser +
                            "\", \"view\": \"64\", \"hive\": \"" + made.users[0].classes.string() + "\"}";
    const std::string software = "\", \"hive\": \"" + made.software.string() + "\"}";
    const std::string narrow = missing + "\\\\weg\\\\schmal.dll\", \"user\": \"\", \"view\": \"32" + software;
    const std::string classes = withDoubledBackslashes(kClass);
    const std::string ownClasses = withDoubledBackslashes(kOwnClass);
    EXPECT_EQ(
        "{\n  \"windows\": \"Windows 7 Ultimate, 6.1.7601, 64-bit\",\n  \"elsewhere\": 1,\n  \"rows\": ["
        "\n    {\"number\": 1, \"key\": \"" +
            ownClasses + "\\\\InprocServer32\", \"name\": \"\", \"data\": \"C:\\\\Weg\\\\eigen.dll" + own +
            ",\n    {\"number\": 2, \"key\": \"" + ownClasses + "\", \"name\": \"\", \"data\": \"" + own +
            ",\n    {\"number\": 3, \"key\": \"" + withDoubledBackslashes(kPaths) +
            "b \\\"c\\\".exe\", \"name\": \"\", \"data\": \"C:\\\\W\\u0009e,\\u001b.exe" + missing +
            "\\\\w\\u0009e,\\u001b.exe\", \"user\": \"\", \"view\": \"64" + software +
            ",\n    {\"number\": 4, \"key\": \"" + classes +
            "\\\\InprocServer32\", \"name\": \"\", \"data\": \"C:\\\\Weg\\\\schmal.dll" + narrow +
            ",\n    {\"number\": 5, \"key\": \"" + classes + "\", \"name\": \"\", \"data\": \"" + narrow +
            "\n  ]\n}\n",
        report("json"));
}

TEST_F(ReportText, WithoutRows) {
    makeDiskWith({}, Generation::Seven);
    const auto form = [&](const char* name) { return onDisk({"--user", "all", "--report", name, "-"}).out; };
    const std::string none = ": Hervorragend, keine Fehler gefunden. (0 von 9" + kEntries + "0%)\n";
    EXPECT_EQ("Windows 7 Professional Service Pack 1, 6.1.7601, 32-bit\nuser " + kUser + none + "user " +
                  kSecondUser + none,
              form("text"));
    EXPECT_EQ("number,key,name,data,kind,reason,file,user,view,hive\r\n", form("csv"));
    EXPECT_EQ(
        "{\n  \"windows\": \"Windows 7 Professional Service Pack 1, 6.1.7601, 32-bit\",\n  \"elsewhere\": "
        "0,\n  \"rows\": []\n}\n",
        form("json"));
}

// The kinds without a file, and what is on no disk.
TEST_F(ReportText, OfExportedRegistries) {
    const std::string classes =
        "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-00000000000";
    const std::string uninstall =
        "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
    const std::string registry = this->registry(
        "a.reg", classes + "1}]\n@=\"da\"\n" + classes + "2}]\n@=\"\"\n" + classes + "3}]\n@=\"da\"\n" +
                     classes + "4}\\TypeLib]\n@=\"{AAAAAAAA-0000-0000-0000-000000000001}\"\n" + classes +
                     "5}]\n@=\"da\"\n" + uninstall + "a]\n\"DisplayName\"=\"a\"\n" + uninstall +
                     "b]\n\"x\"=\"y\"\n" + uninstall + "c]\n\"DisplayName\"=\"c\"\n");
    const Outcome outcome = run({"--registry", registry, "--report", "csv", "-", "--report", "text", "-"});
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("", outcome.err);
    const std::string link =
        "\"dead link\",\"the class, interface or type library that the value names is not "
        "there\",\"{AAAAAAAA-0000-0000-0000-000000000001}\",\"\",\"\",\"\"\r\n";
    const std::string dead =
        "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000004}";
    const std::string stale =
        "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\b";
    const std::string target = "{AAAAAAAA-0000-0000-0000-000000000001}";
    EXPECT_EQ(
        "number,key,name,data,kind,reason,file,user,view,hive\r\n"
        "1,\"" +
            kClass +
            "\",\"\",\"\",\"empty key\",\"the key holds nothing but an empty default "
            "value\",\"\",\"\",\"\",\"\"\r\n"
            "2,\"" +
            dead + "\\TypeLib\",\"\",\"" + target + "\"," + link + "3,\"" + dead + "\",\"\",\"\"," + link +
            "4,\"" + stale +
            "\",\"x\",\"y\",\"stale uninstall entry\",\"the entry has no command that would remove a "
            "program\",\"\",\"\",\"\",\"\"\r\n"
            "Sehr viele Fehler gefunden. (4 von 18" +
            kEntries +
            "22,22%)\n"
            "\n1  empty key\n    " +
            kClass +
            "\n    (default) = \n"
            "\n2  dead link\n    " +
            dead + "\\TypeLib\n    (default) = " + target + "\n    looked for: " + target +
            "\n"
            "\n3  dead link\n    " +
            dead + "\n    (default) = \n    looked for: " + target +
            "\n"
            "\n4  stale uninstall entry\n    " +
            stale + "\n    x = y\n\n",
        outcome.out);
}

// What marks and signs of control do to a terminal no name may do.
TEST_F(ReportText, SignsThatAreNoTextAreWrittenAsNumbers) {
    makeDiskWith(
        [](MadeHive& software) {
            auto& nt = keyAt(software.root, u"Microsoft\\Windows NT\\CurrentVersion");
            std::erase_if(nt.values, [](const auto& value) { return value.name == u"ProductName"; });
            const std::u16string name{u'W',   0x1F,   0x20,   0x7E,   0x7F,   0x80,   0x9F,   0xA0,
                                      0x7FF,  0x800,  0x2029, 0x202A, 0x202E, 0x202F, 0x2065, 0x2066,
                                      0x2069, 0x206A, 0xD7FF, 0xE000, 0xFFFF, 0xD800, 0xDC00, 0xDBFF,
                                      0xDFFF, 0xD800, u'x',   0xDC00, 0xDBFF};
            nt.values.push_back(textValue(u"ProductName", name));
        },
        Generation::Seven);
    const auto form = [&](const char* name) { return onDisk({"--user", "all", "--report", name, "-"}).out; };
    const std::string first = "\xC2\xA0\xDF\xBF\xE0\xA0\x80\xE2\x80\xA9";
    const std::string second = "\xE2\x80\xAF\xE2\x81\xA5";
    const std::string third =
        "\xE2\x81\xAA\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    const std::string text = form("text");
    EXPECT_EQ("W\\x1F ~\\x7F\\x80\\x9F" + first + "\\u202A\\u202E" + second + "\\u2066\\u2069" + third +
                  "\\uD800x\\uDC00\\uDBFF Service Pack 1, 6.1.7601, 32-bit",
              text.substr(0, text.find('\n')));
    EXPECT_EQ("{\n  \"windows\": \"W\\u001f ~\\u007f\\u0080\\u009f" + first + "\\u202a\\u202e" + second +
                  "\\u2066\\u2069" + third +
                  "\\\\uD800x\\\\uDC00\\\\uDBFF Service Pack 1, 6.1.7601, 32-bit\",\n  \"elsewhere\": 0,\n  "
                  "\"rows\": []\n}\n",
              form("json"));
}

}  // namespace
}  // namespace bromvale::testing
