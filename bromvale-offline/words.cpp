#include "bromvale-offline/words.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "bromvale-offline/script.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/windows_types.h"

namespace bromvale::offline {
namespace {

struct Named {
    std::string_view name;
    int number;
};

constexpr std::array kButtons{
    Named{"OK", IDOK},
    Named{"Abbrechen", IDCANCEL},
    Named{"Beenden", IDABORT},
    Named{"Wiederholen", IDRETRY},
    Named{"Ignorieren", IDIGNORE},
    Named{"Ja", IDYES},
    Named{"Nein", IDNO},
};

constexpr std::array kButtonSets{
    "OK",      "OK/Abbrechen",         "Beenden/Wiederholen/Ignorieren", "Ja/Nein/Abbrechen",
    "Ja/Nein", "Wiederholen/Abbrechen"};

constexpr std::array kKeys{
    Named{"Tab", 9},     Named{"Clear", 12},  Named{"Return", 13},   Named{"Enter", 13}, Named{"Escape", 27},
    Named{"Space", 32},  Named{"PageUp", 33}, Named{"PageDown", 34}, Named{"End", 35},   Named{"Home", 36},
    Named{"Left", 37},   Named{"Up", 38},     Named{"Right", 39},    Named{"Down", 40},  Named{"Execute", 43},
    Named{"Insert", 45}, Named{"Delete", 46}, Named{"Menu", 93},
};

constexpr std::array kKinds{"form",      "label",      "button",   "check box",  "option button",
                            "text box",  "combo box",  "frame",    "line",       "picture",
                            "list view", "image list", "list bar", "status bar", "progress bar",
                            "timer",     "menu",       "socket"};

std::optional<int> number(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<int> singleKey(std::string_view name) {
    for (const Named& key : kKeys) {
        if (equalNoCase(key.name, name)) return key.number;
    }
    if (name.size() >= 2 && upper(name[0]) == 'F') {
        if (const auto f = number(name.substr(1)); f && *f >= 1 && *f <= 24) return 111 + *f;
    }
    if (name.size() == 1) return static_cast<unsigned char>(upper(name[0]));
    return number(name);
}

}  // namespace

std::string_view buttonName(int id) {
    for (const Named& button : kButtons) {
        if (button.number == id) return button.name;
    }
    return "?";
}

std::optional<int> buttonByName(std::string_view name) {
    for (const Named& button : kButtons) {
        if (equalNoCase(button.name, name)) return button.number;
    }
    return std::nullopt;
}

std::string boxKind(std::uint32_t style) {
    constexpr std::array kIcons{"plain", "stop", "question", "exclamation", "information"};
    const std::size_t icon = (style & 0xF0u) >> 4;
    const std::size_t buttons = style & 0xFu;
    return std::string(kIcons[icon < kIcons.size() ? icon : 0]) + " " +
           kButtonSets[buttons < kButtonSets.size() ? buttons : 0];
}

std::string_view kindName(ControlKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

std::optional<KeyPress> keyByName(std::string_view name) {
    KeyPress press;
    for (std::size_t plus = name.find('+'); plus != std::string_view::npos && plus > 0;
         plus = name.find('+')) {
        const std::string_view modifier = name.substr(0, plus);
        if (equalNoCase(modifier, "Alt")) {
            press.alt = true;
        } else if (equalNoCase(modifier, "Shift")) {
            press.shift = true;
        } else {
            return std::nullopt;
        }
        name.remove_prefix(plus + 1);
    }
    const auto key = singleKey(name);
    if (!key) return std::nullopt;
    press.key = *key;
    return press;
}

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
    const auto value = number(text);
    if (!value) throw ScriptError{"'" + std::string(text) + "' is no number"};
    return *value;
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
