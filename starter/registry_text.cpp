#include "starter/registry_text.h"

#include <algorithm>
#include <charconv>

#include "starter/texts.h"

namespace bromvale::starter {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestText = 4096;

bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

class Reader {
  public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    RegistryText read() {
        try {
            readLines();
        } catch (const RegistryText::Fault& fault) {
            result_.keys.clear();
            result_.fault = fault;
        }
        return std::move(result_);
    }

  private:
    void readLines() {
        if (!nextLine() || line_ != "REGEDIT4") fail("Die erste Zeile muss REGEDIT4 lauten");
        while (nextLine()) {
            result_.hasEndMark = line_ == kEndMark;
            if (line_.empty() || line_.starts_with(';')) continue;
            if (line_.starts_with('[')) {
                readKey();
            } else {
                readValue();
            }
        }
    }

    // Ends in CR LF, in LF or with the file.
    bool nextLine() {
        if (rest_.empty()) return false;
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        line_ = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        if (line_.ends_with('\r')) line_.remove_suffix(1);
        ++number_;
        if (std::ranges::any_of(line_, isControl)) fail("Ein Steuerzeichen steht darin");
        return true;
    }

    void readKey() {
        if (!line_.ends_with(']') || line_.size() < 3 || line_[1] == '-') fail("Das ist kein Schlüssel");
        std::string path(line_.substr(1, line_.size() - 2));
        for (const TextKey& key : result_.keys) {
            if (isSameName(key.path, path)) fail("Der Schlüssel steht zweimal da");
        }
        result_.keys.push_back({std::move(path), {}});
    }

    void readValue() {
        if (result_.keys.empty()) fail("Vor dem ersten Schlüssel steht etwas");
        std::vector<TextKey::Value>& values = result_.keys.back().values;
        if (values.size() == kMostValues) fail("Es sind zu viele Werte");
        TextKey::Value value;
        if (!take("@")) value.name = quoted(kLongestName);
        if (!take("=")) fail("Hinter dem Namen fehlt ein Gleichheitszeichen");
        value.data = take("hex(1):") ? bytes() : quoted(kLongestText) + '\0';
        if (!line_.empty()) fail("Hinter dem Wert steht noch etwas");
        for (const TextKey::Value& other : values) {
            if (isSameName(other.name, value.name)) fail("Der Name steht zweimal da");
        }
        values.push_back(std::move(value));
    }

    bool take(std::string_view word) {
        if (!line_.starts_with(word)) return false;
        line_.remove_prefix(word.size());
        return true;
    }

    std::string quoted(std::size_t longest) {
        if (!take("\"")) fail("Es fehlt ein Anführungszeichen, oder der Wert ist kein Text");
        std::string text;
        while (!take("\"")) {
            if (take("\\") && !line_.starts_with('\\') && !line_.starts_with('"')) {
                fail("Hinter einem umgekehrten Schrägstrich steht das falsche Zeichen");
            }
            if (line_.empty()) fail("Es fehlt ein Anführungszeichen");
            if (text.size() == longest) fail("Der Text ist zu lang");
            text += line_.front();
            line_.remove_prefix(1);
        }
        return text;
    }

    // Pairs of digits; a backslash behind a comma goes on in the next line.
    std::string bytes() {
        std::string data;
        while (!line_.empty()) {
            if (take("\\")) {
                if (!line_.empty() || !nextLine()) fail("Die Zeile geht nicht weiter");
                line_.remove_prefix(std::min(line_.find_first_not_of(' '), line_.size()));
                if (line_.empty()) fail("Die Zeile geht nicht weiter");
            }
            if (data.size() == kLongestText) fail("Der Text ist zu lang");
            data += byte();
            if (!line_.empty() && (!take(",") || line_.empty())) fail("Das sind keine Bytes");
        }
        return data;
    }

    char byte() {
        unsigned number = 0;
        const char* const end = line_.data() + std::min<std::size_t>(line_.size(), 2);
        const auto [stop, error] = std::from_chars(line_.data(), end, number, 16);
        if (error != std::errc() || stop != line_.data() + 2) fail("Das sind keine Bytes");
        line_.remove_prefix(2);
        return static_cast<char>(number);
    }

    [[noreturn]] void fail(const char* reason) const { throw RegistryText::Fault{number_, reason}; }

    std::string_view rest_;
    std::string_view line_;  // what is not yet read of it
    std::size_t number_ = 0;
    RegistryText result_;
};

}  // namespace

RegistryText readRegistryText(std::string_view bytes) {
    return Reader(bytes).read();
}

}  // namespace bromvale::starter
