// A registry file cut at every byte: whole lines are read, or there is an error and nothing is read.
#include <string>
#include <vector>

#include "platform/offline/reg_files/reg_file.h"
#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

struct Statement {
    std::string text;   // with its line break
    std::string state;  // of the registry behind it
};

const std::string kStart = "HKEY_CURRENT_USER\\Old\n  v|1|3100\n";

const std::vector<Statement> kStatements = {
    {"Windows Registry Editor Version 5.00\r\n", kStart},
    {"\r\n", kStart},
    {"; a comment\r\n", kStart},
    {"[HKEY_CURRENT_USER\\A]\r\n", "HKEY_CURRENT_USER\\A\n" + kStart},
    {"@=\"C:\\\\x \\\"y\\\"\"\r\n", "HKEY_CURRENT_USER\\A\n  |1|433a5c782022792200\n" + kStart},
    {"\"a\\\\\\\"b\"=\"two\r\nlines\"\r\n",
     "HKEY_CURRENT_USER\\A\n  |1|433a5c782022792200\n  a\\\"b|1|74776f0d0a6c696e657300\n" + kStart},
    {"@=-\r\n", "HKEY_CURRENT_USER\\A\n  a\\\"b|1|74776f0d0a6c696e657300\n" + kStart},
    {"[-HKEY_CURRENT_USER\\A]\r\n", kStart},
    {"[HKEY_CURRENT_USER\\A]x]y]\n", "HKEY_CURRENT_USER\\A]x]y\n" + kStart},
    {"\"d\"=dword:0000001f\n", "HKEY_CURRENT_USER\\A]x]y\n  d|4|1f000000\n" + kStart},
    {"\"h\"=hex:01,02,\\\r\n  03\r\n", "HKEY_CURRENT_USER\\A]x]y\n  d|4|1f000000\n  h|3|010203\n" + kStart},
    {"\"m\"=hex(7):61,00,00,00,00,00\r",
     "HKEY_CURRENT_USER\\A]x]y\n  d|4|1f000000\n  h|3|010203\n  m|7|610000\n" + kStart},
    {"[-HKEY_CURRENT_USER\\Old]\r\n",
     "HKEY_CURRENT_USER\\A]x]y\n  d|4|1f000000\n  h|3|010203\n  m|7|610000\n"},
};

std::string withoutLineBreak(std::string text) {
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.pop_back();
    return text;
}

class CutTest : public RegistryTest {
  protected:
    void load(std::string_view file) {
        registry().clear();
        registry().setText("HKEY_CURRENT_USER\\Old", "v", "1");
        error_ = loadRegText(file, "cut.reg", registry());
    }

    // State behind the statements whose text lies whole within the first `length` characters.
    static std::string stateWithin(std::size_t length) {
        std::string state = kStart;
        std::size_t end = 0;
        for (const Statement& statement : kStatements) {
            if (end + withoutLineBreak(statement.text).size() > length) break;
            state = statement.state;
            end += statement.text.size();
        }
        return state;
    }

    std::optional<RegFileError> error_;
};

TEST_F(CutTest, EveryOffsetOfAnAnsiFile) {
    std::string file;
    for (const Statement& statement : kStatements) file += statement.text;
    for (std::size_t cut = 0; cut <= file.size(); ++cut) {
        load(std::string_view(file).substr(0, cut));
        ASSERT_EQ(error_ ? kStart : stateWithin(cut), dump(registry())) << "cut at " << cut;
        if (error_) {
            ASSERT_GE(error_->line, 1u);
            ASSERT_NE("", error_->reason);
        }
    }
}

TEST_F(CutTest, EveryOffsetOfAWideFile) {
    std::string file = "\xFF\xFE";
    for (const Statement& statement : kStatements) {
        for (const char c : statement.text) file += {c, '\0'};
    }
    for (std::size_t cut = 0; cut <= file.size(); ++cut) {
        load(std::string_view(file).substr(0, cut));
        ASSERT_EQ(error_ ? kStart : stateWithin((cut - 2) / 2), dump(registry())) << "cut at " << cut;
        ASSERT_TRUE(error_ || cut % 2 == 0) << "cut at " << cut;
    }
}

TEST_F(CutTest, ACutBehindALineBreakReadsAllLinesBefore) {
    std::string file;
    for (const Statement& statement : kStatements) {
        file += statement.text;
        load(file);
        ASSERT_FALSE(error_) << error_->line << ": " << error_->reason;
        EXPECT_EQ(statement.state, dump(registry()));
    }
}

}  // namespace
}  // namespace bromvale::offline::testing
