#include "tests/offline/tool_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

namespace bromvale::testing {
namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return "<missing>";
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::string quoted(const std::string& word) {
    std::string result = "'";
    for (const char c : word) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

}  // namespace

ToolTest::ToolTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "bromvale-tool-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
}

ToolTest::~ToolTest() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

Outcome ToolTest::run(const std::vector<std::string>& arguments, const std::string& script) {
    file("stdin", script);
    std::string command = quoted(BROMVALE_OFFLINE_TOOL) + " --now 2026-11-15T07:12:09";
    for (const std::string& argument : arguments) command += " " + quoted(argument);
    command += " <" + quoted(path("stdin")) + " >" + quoted(path("stdout")) + " 2>" + quoted(path("stderr"));
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("stdout"), read("stderr")};
}

Outcome ToolTest::runScript(std::vector<std::string> arguments, const std::string& script) {
    arguments.insert(arguments.end(), {"--script", "-"});
    return run(arguments, script);
}

std::string ToolTest::file(const std::string& name, const std::string& bytes) {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
    return path(name);
}

std::string ToolTest::registry(const std::string& name, const std::string& body) {
    std::string bytes = "REGEDIT4\r\n\r\n";
    for (const std::string& line : linesOf(body)) bytes += line + "\r\n";
    return file(name, bytes);
}

std::string ToolTest::read(const std::string& name) const {
    return contentOf(folder_ / name);
}

std::string ToolTest::readRegistry(const std::string& name) const {
    const std::string bytes = read(name);
    if (!bytes.starts_with("\xFF\xFE")) return "<no UTF-16>";
    std::string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        if (bytes[i] != '\r') text += bytes[i];
    }
    return text;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> linesBehind(const std::string& text, const std::string& word) {
    std::vector<std::string> lines = linesOf(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].starts_with(word))
            return {lines.begin() + static_cast<std::ptrdiff_t>(i) + 1, lines.end()};
    }
    return {};
}

}  // namespace bromvale::testing
