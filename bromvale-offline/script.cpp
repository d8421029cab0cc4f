#include "bromvale-offline/script.h"

#include <cstdio>

#include "bromvale-offline/words.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {
namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.back() == '\r' || text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    return text;
}

}  // namespace

bool Script::load(const std::string& file) {
    std::FILE* source = file == "-" ? stdin : std::fopen(file.c_str(), "rb");
    if (source == nullptr) return false;
    std::string bytes;
    char buffer[4096];
    std::size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, source)) > 0) bytes.append(buffer, count);
    const bool whole = std::ferror(source) == 0;
    if (source != stdin) std::fclose(source);
    std::string_view rest = bytes;
    if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        addLine(ansiFromUtf8(rest.substr(0, end)));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return whole;
}

void Script::addLine(std::string_view text) {
    ++lastNumber_;
    const std::string_view action = trimmed(text);
    if (!action.empty() && action.front() != '#') lines_.push_back({std::string(action), lastNumber_});
}

bool Script::next() {
    if (lines_.empty()) return false;
    const Line line = std::move(lines_.front());
    lines_.pop_front();
    current_ = line.number;
    run(line.text);
    transcript_.lookAtWindows();
    return true;
}

void Script::run(std::string_view action) {
    const int number = current_;
    const auto blank = action.find(' ');
    const std::string_view word = action.substr(0, blank);
    const std::string_view rest = blank == std::string_view::npos ? "" : trimmed(action.substr(blank));
    try {
        if (word == "at") {
            const auto behind = rest.find(' ');
            const int pump = toNumber(rest.substr(0, behind));
            if (pump < 1 || behind == std::string_view::npos) throw ScriptError{"write: at N ACTION"};
            machine().pump.at(static_cast<std::uint64_t>(pump),
                              [this, number, later = std::string(rest.substr(behind + 1))] {
                                  current_ = number;
                                  run(later);
                              });
            return;
        }
        doAction(word, rest, transcript_);
    } catch (const ScriptError& error) {
        // Said once, by the innermost action.
        if (error.text.starts_with("script line ")) throw;
        throw ScriptError{"script line " + std::to_string(number) + ": " + std::string(action) + ": " +
                          error.text};
    }
}

std::string Script::takeMenuChoice() {
    if (lines_.empty() || !lines_.front().text.starts_with("menu ")) return {};
    std::string choice(trimmed(std::string_view(lines_.front().text).substr(5)));
    lines_.pop_front();
    return choice;
}

}  // namespace bromvale::offline
