#include "bromvale-offline/arguments.h"

#include <algorithm>
#include <charconv>

#include "bromvale-offline/script.h"

namespace bromvale::offline {

std::string_view takeWord(std::string_view& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    return word;
}

std::string unescaped(std::string_view text) {
    std::string result(text);
    for (std::size_t at = result.find("\\n"); at != std::string::npos; at = result.find("\\n", at + 2)) {
        result.replace(at, 2, "\r\n");
    }
    return result;
}

int toNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        throw ScriptError{"'" + std::string(text) + "' is no number"};
    }
    return value;
}

std::vector<int> toRows(std::string_view text, int count) {
    std::vector<int> rows;
    if (text == "none") return rows;
    if (text == "all") {
        for (int row = 1; row <= count; ++row) rows.push_back(row);
        return rows;
    }
    if (text.empty()) throw ScriptError{"which rows?"};
    while (!text.empty()) {
        const std::string_view word = takeWord(text);
        const std::size_t dash = word.find('-');
        const int first = toNumber(word.substr(0, dash));
        const int last = dash == std::string_view::npos ? first : toNumber(word.substr(dash + 1));
        if (first < 1 || last > count || first > last) {
            throw ScriptError{"there is no row " + std::string(word) + ", the list has " +
                              std::to_string(count)};
        }
        for (int row = first; row <= last; ++row) rows.push_back(row);
    }
    return rows;
}

}  // namespace bromvale::offline
