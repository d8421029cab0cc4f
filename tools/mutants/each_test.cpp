// The entry of a test program whose tests each run in a process of their own, one after the other, so that
// module-level state starts fresh without a start of the program for each.
//
// Usage: PROGRAM ORDER        ORDER holds a line "SECONDS NAME" a test, in the order in which they run. The
// first that fails
//                             or takes longer is told ("failed NAME", "slow NAME"), and the program ends
//                             with 1.
//        PROGRAM --measure SECONDS   runs all tests but those of real registries and tells "passed NAME
//        SECONDS FILE" or
//                             another word for each
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Planned {
    double seconds = 0;
    std::string name;
    std::string file = {};  // that it stands in
};

std::vector<Planned> planOf(const char* file) {
    std::vector<Planned> plan;
    std::ifstream lines(file);
    for (Planned one; lines >> one.seconds >> std::ws && std::getline(lines, one.name);) plan.push_back(one);
    return plan;
}

std::vector<Planned> allTests(double seconds) {
    std::vector<Planned> plan;
    const testing::UnitTest& program = *testing::UnitTest::GetInstance();
    for (int i = 0; i < program.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *program.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const testing::TestInfo& test = *suite.GetTestInfo(j);
            const std::string name = std::string(suite.name()) + "." + test.name();
            if (name.find("RealRegistry") == std::string::npos && name.find("DISABLED_") == std::string::npos)
                plan.push_back({seconds, name, test.file()});
        }
    }
    return plan;
}

[[noreturn]] void runHere(const std::string& name) {
    setpgid(0, 0);
    const int nothing = open("/dev/null", O_RDWR);
    for (int descriptor = 0; descriptor < 3; ++descriptor) dup2(nothing, descriptor);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    GTEST_FLAG_SET(filter, name);
    _exit(RUN_ALL_TESTS());
}

// "passed", "failed" or "slow".
const char* run(const Planned& test) {
    const pid_t child = fork();
    if (child == 0) runHere(test.name);
    sigset_t ended;
    sigemptyset(&ended);
    sigaddset(&ended, SIGCHLD);
    const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(test.seconds);
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        const double left = std::chrono::duration<double>(until - std::chrono::steady_clock::now()).count();
        if (left <= 0) {
            kill(-child, SIGKILL);
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return "slow";
        }
        const timespec wait = {static_cast<std::time_t>(left),
                               static_cast<long>((left - std::floor(left)) * 1e9)};
        sigtimedwait(&ended, nullptr, &wait);
    }
    kill(-child, SIGKILL);  // what it left behind
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? "passed" : "failed";
}

}  // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    sigset_t ended;
    sigemptyset(&ended);
    sigaddset(&ended, SIGCHLD);
    sigprocmask(SIG_BLOCK, &ended, nullptr);
    if (count == 3) {
        for (const Planned& test : allTests(std::atof(arguments[2]))) {
            const auto start = std::chrono::steady_clock::now();
            const char* const word = run(test);
            const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
            std::printf("%s %s %.4f %s\n", word, test.name.c_str(), took.count(), test.file.c_str());
            std::fflush(stdout);
        }
        return 0;
    }
    for (const Planned& test : planOf(arguments[1])) {
        const char* const word = run(test);
        if (std::string(word) == "passed") continue;
        std::printf("%s %s\n", word, test.name.c_str());
        return 1;
    }
    return 0;
}
