#include "tests/proof/trials/campaign.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace bromvale::proof {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kSecondsToRun = 60;
constexpr std::size_t kMostTold = 60;
constexpr std::size_t kLongestTold = 1500;
constexpr std::size_t kMostShown = 2;

// What a child says, through a pipe: its result behind the mark, and before it whatever a crash wrote.
constexpr char kResultMark[] = "\n<result>\n";

std::string readAll(int from) {
    std::string text;
    char buffer[8192];
    for (ssize_t count = 0; (count = ::read(from, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

void writeAll(int to, const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t count = ::write(to, text.data() + done, text.size() - done);
        if (count <= 0) return;
        done += static_cast<std::size_t>(count);
    }
}

std::string makeFolder() {
    std::error_code none;
    const fs::path memory = "/dev/shm";
    std::string pattern =
        ((fs::is_directory(memory, none) ? memory : fs::temp_directory_path()) / "bromvale-proof-XXXXXX")
            .string();
    return ::mkdtemp(pattern.data()) == nullptr ? std::string() : pattern;
}

// "seven numbers, then the problems".
std::string packed(const Trial& trial) {
    const Counts& counts = trial.counts();
    char text[120];
    std::snprintf(text, sizeof text, "%d %d %d %d %d\n", counts.entries, counts.rows, counts.keysGone,
                  counts.filesGone, counts.started);
    std::string result = text;
    for (const std::string& problem : trial.problems()) result += "    " + problem + "\n";
    return result;
}

}  // namespace

ChildResult inChild(const std::function<std::string(const std::string& hostFolder)>& action) {
    const std::string folder = makeFolder();
    int ends[2];
    if (folder.empty() || ::pipe(ends) != 0) return {false, "no folder or pipe"};
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::dup2(ends[1], STDERR_FILENO);
        ::alarm(kSecondsToRun);
        const std::string text = action(folder);
        std::fflush(nullptr);
        writeAll(ends[1], kResultMark + text);
        ::_exit(0);
    }
    ::close(ends[1]);
    const std::string said = readAll(ends[0]);
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    fs::remove_all(folder);
    const std::size_t mark = said.rfind(kResultMark);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && mark != std::string::npos)
        return {true, said.substr(mark + std::strlen(kResultMark)), said.substr(0, mark)};
    const std::string end = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                                                : "status " + std::to_string(WEXITSTATUS(status));
    return {false, "ended with " + end + ":\n" + said, said};
}

Outcome tryMachines(std::uint64_t firstSeed, int count) {
    Outcome outcome;
    const auto start = std::chrono::steady_clock::now();
    for (std::uint64_t seed = firstSeed; seed < firstSeed + static_cast<std::uint64_t>(count); ++seed) {
        const ChildResult result = inChild([seed](const std::string& folder) {
            Trial trial(generate(seed), folder);
            trial.run();
            return packed(trial);
        });
        Counts counts;
        const std::size_t end = result.text.find('\n');
        if (result.ended) {
            ++outcome.counts.machines;
            std::sscanf(result.text.c_str(), "%d %d %d %d %d", &counts.entries, &counts.rows,
                        &counts.keysGone, &counts.filesGone, &counts.started);
        }
        outcome.counts.entries += counts.entries;
        outcome.counts.rows += counts.rows;
        outcome.counts.keysGone += counts.keysGone;
        outcome.counts.filesGone += counts.filesGone;
        outcome.counts.started += counts.started;
        const std::string problems = result.ended ? result.text.substr(end + 1) : result.text;
        if (!problems.empty()) outcome.failures.push_back({seed, problems});
    }
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return outcome;
}

std::string Outcome::figures() const {
    char text[240];
    std::snprintf(text, sizeof text,
                  "%d machines in %.1f s: %d entries, %d rows, %d keys removed and put back, %d files "
                  "emptied, %d programs "
                  "started; %zu machines failed",
                  counts.machines, seconds, counts.entries, counts.rows, counts.keysGone, counts.filesGone,
                  counts.started, failures.size());
    return text;
}

std::string Outcome::report() const {
    std::string text = "failing seeds:";
    for (const Failure& failure : failures) text += " " + std::to_string(failure.seed);
    for (std::size_t i = 0; i < failures.size() && i < kMostTold; ++i)
        text += "\nseed " + std::to_string(failures[i].seed) + ":\n" +
                failures[i].problems.substr(0, kLongestTold);
    for (std::size_t i = 0; i < failures.size() && i < kMostShown; ++i)
        text += "\n" + describe(generate(failures[i].seed)) + "  wrong:\n" + failures[i].problems;
    return text;
}

}  // namespace bromvale::proof
