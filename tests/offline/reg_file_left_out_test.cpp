// What a registry file can't say is left out of what is only to be looked at, with all below it, and counted.
#include "platform/offline/reg_files/reg_file.h"
#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

const std::string kHead = "Windows Registry Editor Version 5.00\r\n";

std::string narrow(std::string_view file) {
    std::string text;
    for (std::size_t i = 2; i < file.size(); i += 2) text += file[i];
    return text;
}

TEST_F(RegistryTest, AKeyWithoutAFormIsLeftOutWithWhatLiesBelow) {
    const std::u16string key = u"HKEY_CURRENT_USER\\K";
    registry().setText(key, u"a", u"b");
    registry().setText(key + u"\\Zeile\nZeile\\Unten", u"a", u"b");
    registry().setText(key + u"\\Zwei", u"c", u"d");
    std::size_t leftOut = 9;
    const std::vector<std::u16string> keys{key};
    EXPECT_EQ(narrow(regFileOf(registry(), keys, leftOut)),
              kHead +
                  "\r\n[HKEY_CURRENT_USER\\K]\r\n\"a\"=\"b\"\r\n\r\n[HKEY_CURRENT_USER\\K\\Zwei]\r\n\"c\"="
                  "\"d\"\r\n");
    EXPECT_EQ(leftOut, 1u);
}

TEST_F(RegistryTest, AWantedKeyStandsThereWithoutValuesToo) {
    registry().createKey(u"HKEY_CURRENT_USER\\K\\Leer");
    std::size_t leftOut = 9;
    const std::vector<std::u16string> keys{u"HKEY_CURRENT_USER\\K"};
    EXPECT_EQ(narrow(regFileOf(registry(), keys, leftOut)),
              kHead + "\r\n[HKEY_CURRENT_USER\\K]\r\n\r\n[HKEY_CURRENT_USER\\K\\Leer]\r\n");
    EXPECT_EQ(leftOut, 0u);
}

TEST_F(RegistryTest, AValueWithoutAFormIsLeftOutAlone) {
    const std::u16string key = u"HKEY_CURRENT_USER\\K";
    registry().setText(key, std::u16string(u"a\0b", 3), u"x");
    registry().setText(key, u"c", u"d");
    std::size_t leftOut = 9;
    const std::vector<std::u16string> keys{key, u"HKEY_CURRENT_USER\\fehlt"};
    EXPECT_EQ(narrow(regFileOf(registry(), keys, leftOut)),
              kHead + "\r\n[HKEY_CURRENT_USER\\K]\r\n\"c\"=\"d\"\r\n");
    EXPECT_EQ(leftOut, 1u);
}

}  // namespace
}  // namespace bromvale::offline::testing
