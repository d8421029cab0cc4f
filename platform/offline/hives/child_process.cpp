#include "platform/offline/hives/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>

namespace bromvale::offline {
namespace {

constexpr int kAnswered = 0;
constexpr int kThrew = 1;
constexpr int kNobodyListens = 2;

void beQuiet() {
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) ::dup2(nowhere, STDERR_FILENO);
    const rlimit none{};
    ::setrlimit(RLIMIT_CORE, &none);
    ::signal(SIGABRT, SIG_DFL);
}

[[noreturn]] void answer(int pipe, const std::function<std::string()>& work) {
    beQuiet();
    try {
        std::string text = work();
        while (!text.empty()) {
            const ssize_t count = ::write(pipe, text.data(), text.size());
            if (count < 0 && errno != EINTR) ::_exit(kNobodyListens);
            if (count > 0) text.erase(0, static_cast<std::size_t>(count));
        }
    } catch (const std::exception&) {
        ::_exit(kThrew);
    }
    ::_exit(kAnswered);
}

// All that comes until the other end is closed. False when patience is at its end.
bool readAll(int pipe, std::chrono::milliseconds patience, std::string& text) {
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        pollfd waiting{pipe, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(std::min<long>(left.count(), 60'000)));
        if (ready <= 0) continue;
        char buffer[4096];
        const ssize_t count = ::read(pipe, buffer, sizeof buffer);
        if (count == 0 || (count < 0 && errno != EINTR)) return true;
        if (count > 0) text.append(buffer, static_cast<std::size_t>(count));
    }
}

std::string endOf(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return std::string("can't be waited for: ") + std::strerror(errno);
    }
    if (WIFSIGNALED(status)) return "was ended by signal " + std::to_string(WTERMSIG(status));
    if (WEXITSTATUS(status) != kAnswered) return "ended with status " + std::to_string(WEXITSTATUS(status));
    return {};
}

}  // namespace

ChildAnswer answerOfChild(const std::function<std::string()>& work, std::chrono::milliseconds patience) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return {{}, std::string("can't be started: ") + std::strerror(errno)};
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        answer(ends[1], work);
    }
    const int number = errno;
    ::close(ends[1]);
    ChildAnswer result;
    if (child < 0) {
        result.problem = std::string("can't be started: ") + std::strerror(number);
    } else {
        const bool ended = readAll(ends[0], patience, result.text);
        if (!ended) ::kill(child, SIGKILL);
        result.problem = endOf(child);
        if (!ended) result.problem = "did not end in time";
    }
    ::close(ends[0]);
    return result;
}

}  // namespace bromvale::offline
