#include "base/editor_key_path.h"

#include <gtest/gtest.h>

namespace bromvale::testing {
namespace {

TEST(RealKeyPath, TheSystemsNamesBecomeTheEditors) {
    EXPECT_EQ(editorKeyPath(u"\\REGISTRY\\MACHINE\\SOFTWARE\\Wow6432Node\\A"),
              u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\A");
    EXPECT_EQ(editorKeyPath(u"\\Registry\\User\\S-1-5-21_Classes\\CLSID\\\u0141"),
              u"HKEY_USERS\\S-1-5-21_Classes\\CLSID\\\u0141");
}

TEST(RealKeyPath, NamesThatTheEditorHasNoneForAreNone) {
    for (const char16_t* path : {u"", u"\\REGISTRY\\MACHINE\\", u"\\REGISTRY\\MACHINES\\A",
                                 u"\\REGISTRY\\A\\{1}\\B", u"HKEY_LOCAL_MACHINE\\A"}) {
        EXPECT_EQ(editorKeyPath(path), std::nullopt);
    }
}

}  // namespace
}  // namespace bromvale::testing
