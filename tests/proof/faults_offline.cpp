// Every platform call and every allocation of what a user does fails once, each in a process of its own.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>

#include "core/state.h"
#include "platform/offline/machine.h"
#include "tests/proof/faults/allocations.h"
#include "tests/proof/faults/scripts.h"
#include "tests/proof/faults/table.h"
#include "tests/proof/trials/campaign.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace bromvale::proof {
namespace {

using offline::machine;
using Texts = std::vector<std::string>;

// Handles that a failed call may leave open at most.
constexpr std::size_t kMostLeft = 2;

// With the log of every routine, which makes calls and allocations of its own.
bool isLongRun() {
    const char* mode = std::getenv("BROMVALE_PROOF");
    return mode != nullptr && std::string_view(mode) == "long";
}

bool leaksMemory() {
#if defined(__SANITIZE_ADDRESS__)
    return __lsan_do_recoverable_leak_check() != 0;
#else
    return false;
#endif
}

std::string joined(const Texts& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

class Faults : public ::testing::TestWithParam<std::size_t> {
  protected:
    Faults() : script_(scripts().at(GetParam())) {
        WebHost = startWebServer();
        script_.prepare();
        if (isLongRun()) ground_.traceFromNow();
        ground_.remember();
    }
    ~Faults() override { stopWebServer(); }

    // The script and the same once more, with what is wrong behind each.
    Texts run(bool leakAllowed, bool lookForLeaks) {
        try {
            script_.act();
        } catch (const std::bad_alloc&) {
            // Of a step that no handler of the program is around: a test's own.
        }
        machine().faults.clear();
        letAllocationsWork();
        Texts wrongs = ground_.wrongs(script_);
        handleWrongs(leakAllowed, wrongs);
        script_.again();
        script_.act();
        if (!(script_.isDoneAgain ? script_.isDoneAgain() : script_.isDone()))
            wrongs.push_back("the same once more doesn't do its work");
        for (const std::string& line : ground_.wrongs(script_)) wrongs.push_back("once more: " + line);
        if (lookForLeaks && leaksMemory()) wrongs.push_back("leaks memory");
        return wrongs;
    }

    void handleWrongs(bool leakAllowed, Texts& wrongs) const {
        const Ground::Handles now = Ground::handles();
        const auto compare = [&](const char* what, std::size_t before, std::size_t described,
                                 std::size_t after) {
            if (after > before + described + (leakAllowed ? kMostLeft : 0))
                wrongs.push_back(std::string(what) + " left open: " + std::to_string(before) + " before, " +
                                 std::to_string(after) + " after");
        };
        compare("keys", ground_.handlesBefore().keys, described_.keys, now.keys);
        compare("searches", ground_.handlesBefore().searches, described_.searches, now.searches);
        compare("files", ground_.handlesBefore().files, described_.files, now.files);
        compare("internet", ground_.handlesBefore().internet, described_.internet, now.internet);
    }

    // A run without a fault; what it leaves open is what the routines are known to leave open.
    void learn() {
        const ChildResult result = inChild([this](const std::string&) {
            Texts calls;
            machine().faults.observe([&](std::string_view operation) { calls.emplace_back(operation); });
            script_.act();
            machine().faults.clear();
            const Ground::Handles now = Ground::handles();
            const Ground::Handles& before = ground_.handlesBefore();
            std::string text = script_.isDone() ? "" : "not done:\n";
            for (const offline::Event& event :
                 script_.isDone() ? std::vector<offline::Event>{} : machine().events.all())
                text += "  " + readable(event.text) + "\n";
            text += joined(ground_.wrongs(script_)) + "calls " + std::to_string(now.keys - before.keys) +
                    " " + std::to_string(now.searches - before.searches) + " " +
                    std::to_string(now.files - before.files) + " " +
                    std::to_string(now.internet - before.internet) + "\n";
            return text + joined(calls);
        });
        ASSERT_TRUE(result.ended) << result.text;
        ASSERT_TRUE(result.text.starts_with("calls ")) << result.text;
        const std::size_t end = result.text.find('\n');
        ASSERT_EQ(std::sscanf(result.text.c_str(), "calls %zu %zu %zu %zu", &described_.keys,
                              &described_.searches, &described_.files, &described_.internet),
                  4);
        for (std::size_t at = end + 1; at < result.text.size(); at = result.text.find('\n', at) + 1)
            calls_.push_back(result.text.substr(at, result.text.find('\n', at) - at));
    }

    void tryCall(unsigned number, unsigned nthOfItsKind, long error, bool lookForLeaks) {
        const std::string& operation = calls_[number];
        ++runs_;
        const ChildResult result = inChild([&](const std::string&) {
            machine().faults.fail(operation, nthOfItsKind, error);
            return joined(run(mayLeak(operation) || script_.removesKeys, lookForLeaks));
        });
        if (result.ended && result.text.empty()) return;
        ++failures_;
        if (failures_ > 8) return;
        ADD_FAILURE() << script_.name << ", call " << number + 1 << " of " << calls_.size() << ", "
                      << operation << " answers " << error << ":\n"
                      << result.text;
    }

    const Script& script_;
    Ground ground_;
    Ground::Handles described_;
    Texts calls_;
    int runs_ = 0;
    int failures_ = 0;
};

class Calls : public Faults {};

TEST_P(Calls, EachFailsOnce) {
    learn();
    std::map<std::string, unsigned> seen;
    for (unsigned number = 0; number < calls_.size() && !HasFatalFailure(); ++number) {
        const unsigned nth = ++seen[calls_[number]];
        const auto errors = faultsOf(calls_[number]);
        for (std::size_t i = 0; i < errors.size(); ++i) {
            tryCall(number, nth, errors[i], number % 10 == 0 && i == 0);
        }
    }
    std::printf("%s: %zu calls, %d runs, %d failed\n", script_.name, calls_.size(), runs_, failures_);
    EXPECT_EQ(failures_, 0);
    EXPECT_GE(calls_.size(), 2u);
}

class Allocations : public Faults {};

TEST_P(Allocations, EachFailsOnce) {
    learn();
    const ChildResult noted = inChild([this](const std::string&) {
        noteAllocations();
        script_.act();
        std::string own;
        for (const bool program : notedAllocations()) own += program ? '1' : '0';
        return own;
    });
    ASSERT_TRUE(noted.ended) << noted.text;
    std::vector<unsigned long> numbers;
    for (std::size_t i = 0; i < noted.text.size(); ++i) {
        if (noted.text[i] == '1') numbers.push_back(i);
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        ++runs_;
        const ChildResult result = inChild([&](const std::string&) {
            failAllocation(numbers[i]);
            return joined(run(true, i % 10 == 0));
        });
        if (result.ended && result.text.empty()) continue;
        if (++failures_ > 8) continue;
        ADD_FAILURE() << script_.name << ", allocation " << i + 1 << " of " << numbers.size() << ":\n"
                      << result.text;
    }
    std::printf("%s: %zu allocations of %zu are the program's, %d runs, %d failed\n", script_.name,
                numbers.size(), noted.text.size(), runs_, failures_);
    EXPECT_EQ(failures_, 0);
    EXPECT_FALSE(noted.text.empty());
}

std::string nameOf(const ::testing::TestParamInfo<std::size_t>& info) {
    return scripts().at(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(Of, Calls, ::testing::Range<std::size_t>(0, 10), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, Allocations, ::testing::Range<std::size_t>(0, 10), nameOf);

}  // namespace
}  // namespace bromvale::proof
