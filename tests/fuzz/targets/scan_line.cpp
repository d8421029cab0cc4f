// Lines of a scan: both ways of taking one apart end, and agree; what has none of the three signs in its
// parts comes back as it was written.
#include "scanner/scan_line.h"

#include "base/failure.h"
#include "platform/exact/text.h"
#include "tests/fuzz/program.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

bool isInside(std::string_view part, std::string_view line) {
    return part.empty() ||
           (part.data() >= line.data() && part.data() + part.size() <= line.data() + line.size());
}

// A part that can't be taken is reported by one way and a failure of the other.
void takeApart(std::string_view line) {
    constexpr Routine<> kRoutine{{"modCheckKeys", "CheckReg"}};
    constexpr std::size_t kMostPlace = 32767;
    freshMachine();
    LineParts parts;
    ScanLine(line).takeInto(parts, kRoutine);
    const bool reported =
        offline::machine().drives.exists(std::string_view("C:\\Programme\\Bromvale\\bromvale.log"));
    try {
        const Entry entry = ScanLine(line).entry();
        for (const std::string_view part : {entry.key, entry.name, entry.value})
            require(isInside(part, line), "parts are views of the line");
        if (line.size() > kMostPlace) return;
        require(!reported, "nothing is reported");
        require(parts.hive == entry.hive && parts.key == entry.key && parts.name == entry.name &&
                    parts.value == entry.value,
                "both ways agree");
    } catch (const Failure& failure) {
        require(failure.number != 0 && reported, "the failure is reported, too");
    }
}

void run(std::string_view input) {
    takeApart(input);
    Pieces pieces(input);
    const std::int32_t hive = -2147483647 - 1 + pieces.byte() % 7;
    const std::string_view key = pieces.until("\n");
    const std::string_view name = pieces.until("\n");
    const std::string_view data = pieces.rest();
    std::string line;
    ScanLine::write(line, hive, key, name, data);
    takeApart(line);
    if (key.find_first_of("[]=") != key.npos || name.find_first_of("[]=") != name.npos || !isExact(key))
        return;
    const Entry entry = ScanLine(line).entry();
    const std::string slash = key.find('\\') == key.npos ? "\\" : "";
    require(entry.hive == hive && entry.key == slash + std::string(key) + "]", "hive and key come back");
    require(entry.name == (name.empty() ? "@" : name) && entry.value == data, "name and data come back");
}

std::vector<std::string> seeds() {
    return {"\2Software\\Classes\\CLSID\\{1}\nInprocServer32\nC:\\x.dll", "\1a]b\nc=d\ne",
            "-2147483646[\\a]b=c", "[=]",
            "\1"
            "a\x1A"
            "08364]\n\n"};
}

const KnownTarget kTarget({"scan_line", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
