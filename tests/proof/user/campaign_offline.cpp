#include "tests/proof/user/campaign.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <optional>
#include <string_view>

#include "platform/offline/locale/code_page.h"
#include "tests/proof/trials/campaign.h"
#include "tests/proof/user/choice.h"
#include "tests/proof/user/ground.h"
#include "tests/proof/user/player.h"
#include "tests/proof/user/shrink.h"

namespace bromvale::proof {
namespace {

constexpr int kTriesToShorten = 400;
constexpr int kMostShortened = 2;
constexpr std::size_t kLongestTold = 3000;

// What a run says on its way, so that a crash leaves it behind: lines with these marks.
constexpr std::string_view kHanded = "=> ";  // to the program
constexpr std::string_view kDone = "-> ";
constexpr std::string_view kFigures = "## ";

void say(std::string_view mark, const std::string& text) {
    std::printf("%.*s%s\n", static_cast<int>(mark.size()), mark.data(), text.c_str());
    std::fflush(stdout);
}

// In the process of the run. `next` is asked for actions once the machine stands.
std::string act(std::uint64_t seed, const std::string& folder, const Plant& plant,
                const std::function<std::optional<std::string>(const Model&)>& next) {
    UserGround ground(seed, folder);
    Player player([&]() -> std::optional<std::string> {
        std::optional<std::string> action = next(ground.model());
        if (action) say(kHanded, offline::utf8FromAnsi(*action));
        return action;
    });
    ground.onBox = [&player] { player.box(); };
    player.onAction = [](const std::string& action) { say(kDone, offline::utf8FromAnsi(action)); };
    if (plant) plant();
    player.run();
    ground.onBox = nullptr;
    std::string wrongs;
    for (const std::string& line : player.wrongs()) wrongs += line + "\n";
    for (const std::string& line : ground.wrongs()) wrongs += line + "\n";
    const PlayedCounts& counts = player.counts();
    char figures[120];
    std::snprintf(figures, sizeof figures, "%d %d %d %d %d %d", counts.done, counts.nested, counts.passedOver,
                  counts.servings, ground.keysGone(), ground.filesGone());
    say(kFigures, figures);
    return wrongs;
}

// The lines with a mark, and what is left of the others: a crash's own words.
UserRun runOf(const ChildResult& result) {
    UserRun run;
    run.counts.runs = 1;
    std::string others;
    std::string_view said = result.said;
    while (!said.empty()) {
        const std::size_t end = std::min(said.find('\n'), said.size());
        const std::string_view line = said.substr(0, end);
        said.remove_prefix(std::min(end + 1, said.size()));
        if (line.starts_with(kHanded)) {
            run.actions.push_back(offline::ansiFromUtf8(line.substr(kHanded.size())));
        } else if (line.starts_with(kDone)) {
            run.told.emplace_back(line.substr(kDone.size()));
        } else if (line.starts_with(kFigures)) {
            UserCounts& counts = run.counts;
            std::sscanf(std::string(line).c_str(), "## %d %d %d %d %d %d", &counts.done, &counts.nested,
                        &counts.passedOver, &counts.servings, &counts.keysGone, &counts.filesGone);
        } else {
            others.append(line).append("\n");
        }
    }
    run.wrongs = result.ended ? result.text : result.text.substr(0, result.text.find('\n') + 1) + others;
    return run;
}

UserRun inProcess(std::uint64_t seed, const Plant& plant,
                  const std::function<std::optional<std::string>(const Model&)>& next) {
    return runOf(inChild([&](const std::string& folder) { return act(seed, folder, plant, next); }));
}

void add(const UserCounts& run, UserCounts& all) {
    all.runs += run.runs;
    all.done += run.done;
    all.nested += run.nested;
    all.passedOver += run.passedOver;
    all.servings += run.servings;
    all.keysGone += run.keysGone;
    all.filesGone += run.filesGone;
}

std::string reportOf(const Sequence& sequence, const UserRun& run) {
    return "\nseed " + std::to_string(sequence.seed) + ", the shortest sequence (" +
           std::to_string(sequence.actions.size()) + " actions):\n" + toText(sequence) + "what is wrong:\n" +
           run.wrongs.substr(0, kLongestTold) + "\n";
}

}  // namespace

UserRun letUserAct(std::uint64_t seed, int actions, const Plant& plant) {
    Random random(Random(seed).next());  // neighbours would say the same, a step apart
    const std::vector<std::string> first = chooseAtStart(random);
    std::deque<std::string> waiting(first.begin(), first.end());
    int left = actions;
    return inProcess(seed, plant, [&](const Model& model) -> std::optional<std::string> {
        while (waiting.empty()) {
            if (left-- <= 0) return std::nullopt;
            for (std::string& action : chooseActions(random, model)) waiting.push_back(std::move(action));
        }
        std::string action = std::move(waiting.front());
        waiting.pop_front();
        return action;
    });
}

UserRun replay(const Sequence& sequence, const Plant& plant) {
    std::size_t at = 0;
    return inProcess(sequence.seed, plant, [&](const Model&) -> std::optional<std::string> {
        if (at == sequence.actions.size()) return std::nullopt;
        return sequence.actions[at++];
    });
}

Sequence shortened(const Sequence& sequence, int tries, const Plant& plant) {
    const auto fails = [&](const Actions& actions) {
        return !replay({sequence.seed, actions}, plant).wrongs.empty();
    };
    if (!fails(sequence.actions)) return sequence;
    return {sequence.seed, shrink(sequence.actions, fails, tries)};
}

UserOutcome letUsersAct(std::uint64_t firstSeed, int count) {
    UserOutcome outcome;
    int failed = 0;
    const auto start = std::chrono::steady_clock::now();
    for (std::uint64_t seed = firstSeed; seed < firstSeed + static_cast<std::uint64_t>(count); ++seed) {
        const UserRun run = letUserAct(seed, kActionsOfAUser);
        add(run.counts, outcome.counts);
        if (run.wrongs.empty()) continue;
        if (++failed > kMostShortened) {
            outcome.report +=
                "seed " + std::to_string(seed) + ": " + run.wrongs.substr(0, run.wrongs.find('\n')) + "\n";
            continue;
        }
        const Sequence shortest = shortened({seed, run.actions}, kTriesToShorten);
        outcome.report += reportOf(shortest, replay(shortest));
    }
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return outcome;
}

std::string UserOutcome::figures() const {
    char text[240];
    std::snprintf(
        text, sizeof text,
        "%d users in %.1f s: %d actions, %d of them in the midst of others, %d more passed over, events "
        "served %d times; %d keys removed and put back, %d files gone",
        counts.runs, seconds, counts.done, counts.nested, counts.passedOver, counts.servings, counts.keysGone,
        counts.filesGone);
    return text;
}

}  // namespace bromvale::proof
