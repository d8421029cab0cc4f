// `*.reg` finds what bears that ending in its short name alone, too, as LANG~1.REG; such a file is no undo
// file.
#include "tests/repair/backup_fixture.h"

namespace bromvale::testing {
namespace {

class OtherEndings : public BackupTest {
  protected:
    void put(const Texts& files, const SYSTEMTIME& written) {
        for (const std::string& file : files) undoFile(file, 3, written);
        ASSERT_EQ(filesIn(BackupPath, "*.reg"), files) << "the mask finds short names, too";
    }
};

constexpr SYSTEMTIME kOld{2001, 3, 0, 5, 12, 0, 0, 0};

TEST_F(OtherEndings, OnlyNamesThatEndInRegAreListed) {
    put({"B.REG", "a.reg", "lang.reg_alt"}, kOld);
    form().backup.mnuPopUpBackupZeigen_Click();
    EXPECT_EQ(names(), (Texts{"a.reg", "B.REG"}));
}

TEST_F(OtherEndings, OnlyNamesThatEndInRegGrowOld) {
    DelAfterDays = 0;
    put({"B.REG", "a.reg", "lang.reg_alt"}, kOld);
    AutoFileDel();
    EXPECT_EQ(filesIn(BackupPath, "*"), Texts{"lang.reg_alt"});
}

}  // namespace
}  // namespace bromvale::testing
