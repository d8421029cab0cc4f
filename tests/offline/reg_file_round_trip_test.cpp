// Writing the registry and reading it again; reading real exports.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/offline/reg_files/reg_file.h"
#include "tests/offline/full_registry.h"
#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class RoundTripTest : public RegistryTest {
  protected:
    ~RoundTripTest() override { std::remove(path_.c_str()); }

    // Every second byte of the file behind its mark, which must all be 0: the text of an ASCII file.
    std::string savedText() {
        EXPECT_FALSE(saveRegFile(registry(), path_));
        const std::string bytes = contentOf(path_);
        EXPECT_EQ("\xFF\xFE", bytes.substr(0, 2));
        std::string text;
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
            EXPECT_EQ('\0', bytes[i + 1]);
            text += bytes[i];
        }
        return text;
    }

    const std::string path_ = ::testing::TempDir() + "bromvale_" +
                              ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".reg";
};

TEST_F(RoundTripTest, TheFileIsWhatTheRegistryEditorWrites) {
    registry().setText("HKEY_LOCAL_MACHINE\\Software\\b", "", "C:\\x \"y\"");
    registry().setNumber("HKEY_LOCAL_MACHINE\\Software\\b", "Zahl", 0x89ABCDEF);
    registry().setValue("HKEY_LOCAL_MACHINE\\Software\\b", "a\\\"b", REG_BINARY, "\x01\xFF"s);
    registry().setValue("HKEY_LOCAL_MACHINE\\Software\\b", "leer", REG_NONE, "");
    registry().setValue("HKEY_LOCAL_MACHINE\\Software\\b", "ohne", REG_SZ, "a");
    registry().setValue("HKEY_LOCAL_MACHINE\\Software\\b", "weit", REG_EXPAND_SZ, "%a%\0"s);
    registry().setValue("HKEY_LOCAL_MACHINE\\Software\\b", "lang", REG_BINARY, std::string(30, '\x10'));
    registry().setText("HKEY_CURRENT_USER\\A", "@", "");
    EXPECT_EQ(
        "Windows Registry Editor Version 5.00\r\n"
        "\r\n[HKEY_CURRENT_USER\\A]\r\n"
        "\"@\"=\"\"\r\n"
        "\r\n[HKEY_LOCAL_MACHINE\\Software]\r\n"
        "\r\n[HKEY_LOCAL_MACHINE\\Software\\b]\r\n"
        "@=\"C:\\\\x \\\"y\\\"\"\r\n"
        "\"Zahl\"=dword:89abcdef\r\n"
        "\"a\\\\\\\"b\"=hex:01,ff\r\n"
        "\"leer\"=hex(0):\r\n"
        "\"ohne\"=hex(1):61,00\r\n"
        "\"weit\"=hex(2):25,00,61,00,25,00,00,00\r\n"
        "\"lang\"=hex:10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,\\\r\n"
        "  10,10,10,10,10,10,10,10\r\n",
        savedText());
}

TEST_F(RoundTripTest, EveryTypeAndOddNameComesBackByteForByte) {
    std::string allBytes;
    for (int i = 0; i < 256; ++i) allBytes += static_cast<char>(i);
    const std::string printable = allBytes.substr(1);
    registry().setText("HKEY_CURRENT_USER\\[a]=\"b\";", printable, printable);
    registry().setText("HKEY_CURRENT_USER\\end ]", "\r", "\r\n\r");
    registry().setText("HKEY_USERS\\Ÿ\x81 x", "ü", "");
    for (DWORD type = 0; type < 14; ++type) {
        registry().setValue("HKEY_LOCAL_MACHINE\\T", "all" + std::to_string(type), type, allBytes);
        registry().setValue("HKEY_LOCAL_MACHINE\\T", "none" + std::to_string(type), type, "");
        registry().setValue("HKEY_LOCAL_MACHINE\\T", "a" + std::to_string(type), type, "a");
        registry().setValue("HKEY_LOCAL_MACHINE\\T", "nuls" + std::to_string(type), type, "a\0\0\0"s);
        registry().setValue("HKEY_LOCAL_MACHINE\\T", "four" + std::to_string(type), type, "\0\1\2\3"s);
    }
    registry().setValue("HKEY_LOCAL_MACHINE\\T", "high", 0xFFFFFFFFu, "x");
    registry().setText("HKEY_DYN_DATA", "value of a hive", "x");
    const std::string before = dump(registry());
    ASSERT_FALSE(saveRegFile(registry(), path_));
    registry().clear();
    const auto error = loadRegFile(path_, registry());
    ASSERT_FALSE(error) << error->line << ": " << error->reason;
    EXPECT_EQ(before, dump(registry()));
}

TEST_F(RoundTripTest, WhatHasNoFormInAFileIsAnErrorAndLeavesTheOldFile) {
    registry().createKey("HKEY_CURRENT_USER\\A");
    ASSERT_FALSE(saveRegFile(registry(), path_));
    const std::string before = contentOf(path_);
    registry().createKey("HKEY_CURRENT_USER\\B\nC");
    const auto error = saveRegFile(registry(), path_);
    ASSERT_TRUE(error);
    EXPECT_EQ("the key name holds a line break or a NUL: HKEY_CURRENT_USER\\B\nC", error->reason);
    EXPECT_EQ(before, contentOf(path_));
    registry().deleteKey("HKEY_CURRENT_USER\\B\nC");
    EXPECT_FALSE(saveRegFile(registry(), path_));
}

TEST_F(RoundTripTest, AValuesNameWithANulIsAnErrorToo) {
    registry().setText(u"HKEY_CURRENT_USER\\K", std::u16string(u"a\0b", 3), u"x");
    const auto error = saveRegFile(registry(), path_);
    ASSERT_TRUE(error);
    EXPECT_EQ("a value name holds a NUL, in the key HKEY_CURRENT_USER\\K", error->reason);
    EXPECT_FALSE(std::filesystem::exists(path_));
    EXPECT_FALSE(std::filesystem::exists(path_ + ".part"));
}

TEST_F(RoundTripTest, ADiskThatIsFullAtTheLastByteLeavesTheOldFile) {
    ASSERT_TRUE(registry().createKey("HKEY_CURRENT_USER\\A"));
    std::ofstream(path_) << "alt";
    std::filesystem::create_symlink("/dev/full", path_ + ".part");
    const auto error = saveRegFile(registry(), path_);
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->reason, "cannot be written: No space left on device");
    std::string left;
    std::getline(std::ifstream(path_), left);
    EXPECT_EQ(left, "alt");
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(path_ + ".part")));
}

TEST_F(RoundTripTest, AnUnwritablePlaceIsAnError) {
    const auto error = saveRegFile(registry(), "/missing/folder/x.reg");
    ASSERT_TRUE(error);
    EXPECT_EQ("cannot be written: No such file or directory", error->reason);
}

std::size_t keysOf(std::string_view content, std::string_view mark) {
    std::size_t count = 0;
    for (auto at = content.find(mark); at != std::string_view::npos; at = content.find(mark, at + 1)) ++count;
    return count;
}

class WholeRegistryTest : public RoundTripTest {
  protected:
    // Reads the content, writes the registry and reads it again.
    void comesBack(const std::string& content, std::size_t keys, std::size_t values) {
        const auto error = loadRegText(content, "whole.reg", registry());
        ASSERT_FALSE(error) << error->line << ": " << error->reason;
        EXPECT_EQ(keys, registry().keyCount());
        EXPECT_EQ(values, registry().valueCount());

        const std::string before = dump(registry());
        ASSERT_FALSE(saveRegFile(registry(), path_));
        registry().clear();
        ASSERT_FALSE(loadRegFile(path_, registry()));
        EXPECT_TRUE(before == dump(registry()));
    }
};

TEST_F(WholeRegistryTest, OfARealOnesSizeIsReadWholeAndComesBackByteForByte) {
    const auto full = bromvale::testing::makeFullRegistry();
    EXPECT_EQ(56032u, full.keys);
    EXPECT_EQ(full.keys, keysOf(full.file, "\n\0[\0"sv));
    // Five keys on the way to the exported ones have no line of their own.
    comesBack(full.file, full.keys + 5, full.values);
}

// The two real registries, unpacked for the test. They are not part of the project.
class RealRegistryTest : public WholeRegistryTest {
  protected:
    static std::string unpacked(const std::string& name) {
        std::string content;
        if (std::FILE* pipe = popen(("xz -dc '" BROMVALE_SHARED_DATA_DIR "/" + name + "'").c_str(), "r")) {
            char buffer[65536];
            for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
                content.append(buffer, count);
            }
            pclose(pipe);
        }
        EXPECT_NE(content, "") << "the real registries are not in " BROMVALE_SHARED_DATA_DIR;
        return content;
    }
};

TEST_F(RealRegistryTest, Windows7IsReadWholeAndComesBackByteForByte) {
    const std::string content = unpacked("win7-x86-hklm.reg.xz");
    EXPECT_EQ(56377u, keysOf(content, "\n\0[\0"sv));
    // Five keys on the way to the exported ones have no line of their own.
    comesBack(content, 56377u + 5, 67845u);
}

TEST_F(RealRegistryTest, WindowsMeIsReadWhole) {
    const std::string content = unpacked("winme-hklm.reg.xz");
    EXPECT_EQ(48u, keysOf(content, "\n["));
    const auto error = loadRegText(content, "winme.reg", registry());
    ASSERT_FALSE(error) << error->line << ": " << error->reason;
    EXPECT_EQ(70u, registry().valueCount());
    EXPECT_EQ(
        "\"C:\\WINDOWS\\SYSTEM\\msiexec.exe\"\0"s,
        registry()
            .value("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\msiexec.exe",
                   "")
            ->data);
}

}  // namespace
}  // namespace bromvale::offline::testing
