#include "bromvale-offline/rescue/chosen_rows.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>

#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

constexpr int kWrongUse = 2;

struct Chosen {
    std::vector<bool> rows;
    void add(std::size_t number) {
        if (number == 0 || number > rows.size())
            throw RescueStop{kWrongUse, "there is no row " + std::to_string(number) + "; the report has " +
                                            std::to_string(rows.size())};
        rows[number - 1] = true;
    }
};

bool readNumber(std::string_view& text, std::size_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc();
}

// "7" or "3-5".
bool chooseRange(Chosen& chosen, std::string_view text) {
    std::size_t first = 0;
    std::size_t last = 0;
    if (!readNumber(text, first)) return false;
    last = first;
    if (text.starts_with('-')) {
        text.remove_prefix(1);
        if (!readNumber(text, last)) return false;
    }
    if (!text.empty() || last < first) return false;
    for (std::size_t number = first; number <= last; ++number) chosen.add(number);
    return true;
}

// Parted by commas and blanks.
bool chooseRanges(Chosen& chosen, std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(", \t"), text.size());
        if (end > 0 && !chooseRange(chosen, text.substr(0, end))) return false;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

std::string withoutBlanks(std::string line) {
    while (line.ends_with(' ')) line.pop_back();
    return line;
}

// Views and users have keys of the same path; one that is several can't be told by its path.
bool chooseKey(Chosen& chosen, const Findings& findings, const std::string& line) {
    const std::u16string key = wideFromUtf8(line).text;
    const ReportRow* first = nullptr;
    for (std::size_t i = 0; i < findings.rows.size(); ++i) {
        const ReportRow& row = findings.rows[i];
        if (row.key != key) continue;
        if (first == nullptr) first = &row;
        if (row.hiveFile != first->hiveFile || row.place != first->place)
            throw RescueStop{kWrongUse, "several keys of the report, of views or users, are called " + line +
                                            "; choose by the numbers of their rows"};
        chosen.rows[i] = true;
    }
    return first != nullptr;
}

// A line a row: a number, a range, or a key as the report has it; "#" begins a remark.
void chooseByFile(Chosen& chosen, const Findings& findings, const std::string& path) {
    std::ifstream file(path);
    if (!file || std::filesystem::is_directory(path))
        throw RescueStop{kWrongUse,
                         "'" + path + "' is neither all, nor rows as 1,3-5, nor a file that can be read"};
    std::string line;
    while (std::getline(file, line)) {
        if (line.ends_with('\r')) line.pop_back();
        const std::string bare = withoutBlanks(line);
        if (bare.empty() || bare.starts_with('#')) continue;
        if (bare.starts_with("HKEY_")) {
            // A key's name may end in blanks.
            if (!chooseKey(chosen, findings, line) && !chooseKey(chosen, findings, bare))
                throw RescueStop{kWrongUse, "no row has the key " + bare};
        } else if (!chooseRanges(chosen, bare)) {
            throw RescueStop{kWrongUse, path + ": '" + line + "' is no row"};
        }
    }
}

}  // namespace

std::vector<bool> chosenRows(const Findings& findings, const std::string& option) {
    Chosen chosen{std::vector<bool>(findings.rows.size(), option == "all")};
    if (option == "all") return chosen.rows;
    const bool numbers = option.find_first_not_of("0123456789,- ") == std::string::npos;
    const bool none = option.find_first_of("0123456789") == std::string::npos;
    if (numbers && (none || !chooseRanges(chosen, option)))
        throw RescueStop{kWrongUse, "'" + option + "' are no rows; write 1,3-5"};
    if (!numbers) chooseByFile(chosen, findings, option);
    return chosen.rows;
}

}  // namespace bromvale::offline
