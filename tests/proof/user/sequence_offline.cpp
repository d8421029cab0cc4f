#include "tests/proof/user/sequence.h"

#include <charconv>

#include "platform/offline/locale/code_page.h"

namespace bromvale::proof {
namespace {

constexpr std::string_view kSeed = "seed ";

}  // namespace

std::string toText(const Sequence& sequence) {
    std::string text = std::string(kSeed) + std::to_string(sequence.seed) + "\n";
    for (const std::string& action : sequence.actions) text += offline::utf8FromAnsi(action) + "\n";
    return text;
}

std::optional<Sequence> sequenceOf(std::string_view text) {
    std::optional<Sequence> sequence;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.starts_with('#')) continue;
        if (sequence) {
            sequence->actions.push_back(offline::ansiFromUtf8(line));
            continue;
        }
        std::uint64_t seed = 0;
        const std::string_view number = line.substr(line.starts_with(kSeed) ? kSeed.size() : line.size());
        if (std::from_chars(number.data(), number.data() + number.size(), seed).ec != std::errc()) break;
        sequence.emplace().seed = seed;
    }
    return sequence;
}

}  // namespace bromvale::proof
