#include "platform/offline/reg_files/reg_file.h"

#include <string>
#include <vector>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::string_view kLineEnds = "\r\n";
const std::string kMark = "\xFF\xFE";

// In the stored form, so that no byte of a character is taken for a backslash.
std::string storedText(std::string_view bytes) {
    if (bytes.starts_with(kMark)) return storedFromWideBytes(bytes.substr(kMark.size()));
    return storedFromWide(wideFromAnsi(bytes));
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of(kLineEnds);
        lines.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return lines;
}

bool isKeyLine(std::string_view line) {
    return line.starts_with('[');
}

// Texts with the backslashes that begin an escape, and no others. The names of a key line have none.
std::string withKnownEscapes(std::string_view line) {
    if (isKeyLine(line)) return std::string(line);
    std::string result;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (quoted && line[i] == '\\' && i + 1 < line.size()) {
            const char next = line[++i];
            if (next == '\\' || next == '"') result += '\\';
            result += next;
            continue;
        }
        if (line[i] == '"') quoted = !quoted;
        result += line[i];
    }
    return result;
}

class Merge {
  public:
    Merge(std::string header, Registry& registry) : header_(std::move(header)), registry_(registry) {}

    void line(const std::string& text) {
        if (isKeyLine(text)) {
            enter();
            section_.clear();
        }
        section_.push_back(text);
    }

    // A key with its values. A line that is wrong is taken out, and the rest tried again; without its key
    // line a section is nothing.
    void enter() {
        while (!section_.empty()) {
            std::string text = header_;
            for (const std::string& line : section_) text.append("\r\n").append(line);
            const auto error = loadRegText(kMark + wideBytesFromStored(text + "\r\n"), "", registry_);
            if (!error) return;
            if (error->line <= 2 || error->line > section_.size() + 1) return;
            section_.erase(section_.begin() + static_cast<std::ptrdiff_t>(error->line - 2));
        }
    }

  private:
    std::string header_;
    Registry& registry_;
    std::vector<std::string> section_;
};

}  // namespace

void mergeRegText(std::string_view bytes, Registry& registry) {
    if (!loadRegText(bytes, "", registry)) return;
    const std::vector<std::string> lines = linesOf(storedText(bytes));
    if (lines.empty()) return;
    Merge merge(lines.front(), registry);
    for (std::size_t i = 1; i < lines.size(); ++i) merge.line(withKnownEscapes(lines[i]));
    merge.enter();
}

}  // namespace bromvale::offline
