// What counts as a number, against the system's own parser. It is loaded here only: the program itself does
// without that library.
#include "base/number_parser.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "platform/win32/system/windows.h"
// Behind the system's own header.
#include <oleauto.h>

namespace bromvale {
namespace {

using ParseEntry = HRESULT(WINAPI*)(LPCOLESTR, LCID, ULONG, NUMPARSE*, BYTE*);
using ValueEntry = HRESULT(WINAPI*)(NUMPARSE*, BYTE*, ULONG, VARIANT*);

template <class Entry>
Entry entryOf(const char* name) {
    static const HMODULE library = LoadLibraryA("oleaut32.dll");
    return reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

// Nothing where the system's parser takes the text for no number.
std::optional<double> systemsNumber(const std::string& text) {
    std::array<wchar_t, 100> wide{};
    MultiByteToWideChar(1252, 0, text.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    NUMPARSE number{};
    number.cDig = 30;
    number.dwInFlags = NUMPRS_STD;
    std::array<BYTE, 30> digits{};
    const auto parse = entryOf<ParseEntry>("VarParseNumFromStr");
    if (FAILED(parse(wide.data(), LOCALE_USER_DEFAULT, 0, &number, digits.data()))) return std::nullopt;
    VARIANT value{};
    const auto valueOf = entryOf<ValueEntry>("VarNumFromParseNum");
    return SUCCEEDED(valueOf(&number, digits.data(), VTBIT_R8, &value)) ? value.dblVal : INFINITY;
}

std::optional<double> ourNumber(const std::string& text) {
    const auto number = parseNumber(text);
    return number ? std::optional(number->value) : std::nullopt;
}

class SystemsNumbers : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(decimalSign() == ',') << "the table is written with German signs"; }
};

const char* const kTexts[] = {
    // signs and parentheses
    "80", "-80", "+80", "80-", "80 -", "80+", "80 +", "- 80", "-\t80", "--80", "- - 80", "++80", "+-80",
    "-+80", "-80-", "-80+", "+80-", "+80+", "80-+", "80 - +", "(80)", "( 80 )", " (80) ", "\t(\t80\t)\t",
    "(-80)", "-(80)", "- (80)", "+(80)", "(+80)", "(80-)", "(80 -)", "(80+)", "(80)-", "(80) -", "(80)+",
    "(80", "80)", "( 80", "80 )", "((80))", "()", "( )", "(,)", "-80)", "80)-", "80(", "8(0)", "8)0(",
    "80 ()", "() 80", "-", "+", "- ", "8-0", "80-  ", "  80-",
    // currency
    "80 €", "80€", "80€ ", "80 € ", "€80", "€ 80", "€", "€€80", "€-80", "€ - 80", "-€80", "- € 80", "+€80",
    "€+80", "80€-", "80-€", "80 - €", "80 -€", "80 € -", "(80€)", "(€80)", "(80)€", "(80) €", "€(80)",
    "€ (80)", "(€)", "€80€", "-80€-", "(80)-€", "(1.000,5€)", "8€0", "$80", "80$", "80 $", "EUR 80", "80 EUR",
    "80%",
    // blanks
    "", " ", "  ", " 80", "80 ", "\t80\t", "\n80", "80\n", "80\r\n", "\v80", "\f80", "\u00A080", "80\xA0",
    "\xA0", "8 0", "8\u00A00", "1 000", "80\x85", "80\x1C", "80\x7F", "80\x01",
    // decimal and thousands signs
    "80,5", "80,", ",5", ",", "-,5", "(,5)", "(5,)", "80,,5", "80 ,5", "80, 5", "1.000", "1.0.0", "1..0",
    ".5", "-.5", "5.", ".", ".0", "0.", "0,", ",0", "0.000", "000.000", "1.000,5", "1.000.000,00", "1,000.5",
    "1,5.0", "1,2.3", "1.2,3", "1 .000", "1.,5", "1.,", ",.", ",. ", ".,5", ",.5", "1,5,", "1,5.", "1.5,",
    "00", "007", "-0", "123456789012345678901234567890", "0,00000000000000000000001",
    // exponents
    "8e1", "8E1", "8e+1", "8e-1", "8e", "8e+", "80E", "e1", "E5", "e", "8e 1", "8 e1", "1 E5", "8,5e1",
    "8,e1", "8.e1", "1,e", "1.e", ",e5", "8e1,5", "8e1,", "8e1.", "1e.5", "1e+.5", "1e5..", "0e.1", "8e1-",
    "8e1+", "1e5.-", "8e1€", "8e1 €", "(8e1)", "(8e1 )", "8e1)", "1e5(", "-8E-1", "1e1e1", "1e5 6", "0e0",
    "0e5", "0e", "8e01", "8e-00001", "1e308", "1e400", "1e-400", "1e99999",
    // bit patterns
    "&H10", "&h10", "&O17", "&o17", "&H0", "&O0", "&HABCDEF", "&Habcdef", "&H1e1", " &H10", "&H10 ", "+&H10",
    "&H10+", "&10", "& 10", "& H10", "&", "&H", "&HG", "&h1g", "&O", "&O8", "&o18", "&b1", "&x1", "&H-1",
    "&H FF", "&H1.0", "&H1,0", "&H.1", "&H10)", "(&H10", "€&H10", "&H10€",
    // no numbers at all
    "abc", "80x", "x80", "1a", "0x10", "80;", "80'", "'80", "\"80\"", "80\xB2", "\xBC"};

TEST_F(SystemsNumbers, AreOurs) {
    for (const std::string text : kTexts) {
        const auto system = systemsNumber(text);
        const auto ours = ourNumber(text);
        EXPECT_EQ(ours.has_value(), system.has_value()) << '"' << text << '"';
        if (!system || !ours || *system == *ours) continue;
        // The system's parser adds up digit by digit and loses the last bits.
        EXPECT_LT(std::abs(*ours - *system), 1e-12 * std::abs(*system)) << '"' << text << '"';
    }
}

// Where Wine's parser is less strict than it means to be: it looks whether a sign stood in front, not whether
// one stood behind already. An own sign of the exponent may come twice for the same reason.
TEST_F(SystemsNumbers, ASignThatComesTwiceBehindIsNone) {
    for (const std::string text : {"80--", "80++", "80€€", "80 €€", "(80))", "(80) )", "1e+-5", "1e--5"})
        EXPECT_FALSE(ourNumber(text)) << '"' << text << '"';
}

// Windows' parser takes D for an exponent as well as E. Wine's doesn't.
TEST_F(SystemsNumbers, TheExponentMayBeADToo) {
    EXPECT_EQ(ourNumber("8d1"), 80);
    EXPECT_EQ(ourNumber("8D-1"), 0.8);
    EXPECT_FALSE(ourNumber("8d"));
    EXPECT_FALSE(ourNumber("d1"));
}

// Wine's parser takes thousands signs in an exponent as well, but then counts its digits wrong.
TEST_F(SystemsNumbers, ThousandsSignsMayStandInTheExponent) {
    EXPECT_EQ(ourNumber("1e1.0"), 1e10);
    EXPECT_TRUE(systemsNumber("1e1.0"));
}

// Wine's parser takes the sign of a bit pattern and forgets it.
TEST_F(SystemsNumbers, TheSignOfABitPatternCounts) {
    for (const std::string text : {"-&H10", "&H10-", "(&H10)", "-(&H10)"}) {
        EXPECT_EQ(ourNumber(text), -16) << '"' << text << '"';
        EXPECT_TRUE(systemsNumber(text)) << '"' << text << '"';
    }
}

}  // namespace
}  // namespace bromvale
