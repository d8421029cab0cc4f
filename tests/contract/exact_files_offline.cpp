// Final paths of more than a thousand characters, which not every machine can have, and systems without any.
#include <gtest/gtest.h>
#include "platform/exact/files.h"

#include "platform/offline/machine.h"

namespace bromvale::testing {
namespace {

using offline::machine;

TEST(FinalPaths, OfMoreThanAThousandCharactersAreTold) {
    machine().setOs(*offline::osByName("2.6.1.7601"));
    const std::string name(100, 'n');
    machine().drives.makeFolder("C:\\lang");
    SetCurrentDirectoryA("C:\\lang");
    std::u16string expected = u"\\\\?\\C:\\lang";
    for (int depth = 0; depth < 12; ++depth) {
        ASSERT_TRUE(CreateDirectoryA(name.c_str(), nullptr));
        ASSERT_TRUE(SetCurrentDirectoryA(name.c_str()));
        expected += u"\\" + std::u16string(100, u'n');
        EXPECT_EQ(finalPath(".", Links::Follow), expected);
    }
}

TEST(FinalPaths, AreToldFromVistaOn) {
    for (const char* system : {"Windows 98", "Windows NT4", "Windows XP"}) {
        machine().setOs(*offline::osByName(system));
        EXPECT_FALSE(tellsFinalPaths()) << system;
        EXPECT_EQ(finalPath("C:\\WINDOWS", Links::Follow), u"") << system;
    }
    machine().setOs(*offline::osByName("2.6.0.6000"));
    EXPECT_TRUE(tellsFinalPaths());
    EXPECT_EQ(finalPath("c:\\windows", Links::Follow), u"\\\\?\\C:\\WINDOWS");
}

}  // namespace
}  // namespace bromvale::testing
