// The settings key, filled by others: a value changes the one variable of its name or none, and what the
// program stores is what it reads.
#include "core/settings.h"

#include "base/failure.h"
#include "base/numbers.h"
#include "core/state.h"
#include "platform/offline/locale/code_page.h"
#include "tests/fuzz/program.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

struct Number {
    const char* name;
    std::int16_t* variable;
};
// ProxyPort and the two places are read by others, too; Protokoll would switch the log on for good.
const Number kNumbers[] = {{"DelAfterDays", &DelAfterDays}, {"Form_Height", &Form_Height},
                           {"Form_Width", &Form_Width},     {"ProxyPort", &ProxyPort},
                           {"ScreenX", &ScreenX},           {"1stRun", &FirstRun}};
constexpr std::int16_t kBefore = 4711;
constexpr std::size_t kMostText = 253;  // with its NUL it fits the buffer

// Name, type, bytes.
void put(offline::Machine& machine, std::string_view name, DWORD type, std::string_view bytes) {
    machine.registry.setValue(std::string("HKEY_CURRENT_USER\\") + kSettingsKey, std::string(name), type,
                              bytes);
}

std::int16_t expectedFrom(std::string_view text) {
    try {
        return toInt16(text);
    } catch (const Failure&) {
        return kBefore;
    }
}

void run(std::string_view input) {
    offline::Machine& machine = freshMachine();
    Pieces pieces(input);
    const Number& chosen = kNumbers[pieces.byte() % std::size(kNumbers)];
    const std::string_view otherName = pieces.take(pieces.byte() % 32);
    const DWORD otherType = pieces.byte() % 12;
    const std::string text(pieces.rest().substr(0, kMostText));
    for (const Number& number : kNumbers) *number.variable = kBefore;
    ProxyAdresse = EMail = "vorher";
    SettingsRead = true;

    put(machine, chosen.name, 1, text + '\0');
    ReadAppSwitch();
    for (const Number& number : kNumbers) {
        const std::int16_t expected = &number == &chosen ? expectedFrom(text) : kBefore;
        require(*number.variable == expected, "one variable, and the text's number");
    }
    require(EMail == "vorher" && ProxyAdresse == "vorher", "no other one");

    // The registry keeps the name that a value has got, and one in another case is never read.
    for (const std::string_view own : {std::string_view("EMail"), std::string_view(chosen.name)}) {
        if (otherName != own && offline::equalNoCase(otherName, own)) return;
    }
    if (otherName != "Protokoll") put(machine, otherName, otherType, pieces.rest());
    ReadAppSwitch();

    const std::string before = EMail;
    const std::string plain = text.substr(0, text.find('\0'));
    storeSetting(EMail, plain);
    storeSetting(*chosen.variable, "-12");
    ReadAppSwitch();
    // An empty text is stored without any byte, and what has none is passed over.
    require(EMail == (plain.empty() ? before : plain), "a text that was stored is read");
    require(*chosen.variable == -12, "a number that was stored is read");
}

std::vector<std::string> seeds() {
    using namespace std::string_literals;
    return {"\0\0\1"s + "50",
            "\1\4Pro?\1"s + "32768",
            "\2\5EMail\1"s + "a@b.example",
            "\3\5Proxy\4"s + "\1\0\0\0"s,
            "\4\0\7"s + std::string(300, '1'),
            "\5\0\1"s + "-1"};
}

const KnownTarget kTarget({"setting", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
