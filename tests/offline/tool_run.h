#pragma once
// Runs bromvale-offline as a program of its own, in a folder that is empty before and gone afterwards.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bromvale::testing {

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

class ToolTest : public ::testing::Test {
  protected:
    ToolTest();
    ~ToolTest() override;

    // The time is 2026-11-15T07:12:09 unless the arguments say otherwise. `script` goes to standard input.
    Outcome run(const std::vector<std::string>& arguments, const std::string& script = "");
    // The same with "--script -".
    Outcome runScript(std::vector<std::string> arguments, const std::string& script);
    // Writes a file (UTF-8 for scripts, Windows-1252 and CR LF for registry files) and returns its path.
    std::string file(const std::string& name, const std::string& bytes);
    std::string registry(const std::string& name, const std::string& body);
    [[nodiscard]] std::string read(const std::string& name) const;  // "<missing>" where there is none
    // A registry file of version 5.00 as plain text, without CR.
    [[nodiscard]] std::string readRegistry(const std::string& name) const;
    [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

  private:
    std::filesystem::path folder_;
};

// Lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string& text);
// The lines behind the first one that starts with `word`.
std::vector<std::string> linesBehind(const std::string& text, const std::string& word);

}  // namespace bromvale::testing
