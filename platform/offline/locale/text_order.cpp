#include "base/text_order.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace bromvale {
namespace {

// Where a character stands: texts are compared by the places of their characters first, then by their marks.
struct Weight {
    std::uint8_t place = 0;  // 0: passed over in the first comparison
    std::uint8_t mark = 0;
};
using Weights = std::array<Weight, 256>;

// Groups in their order; within a group first the plain letter in both cases, then those with marks, case
// pairs side by side ("=" joins what counts as equal).
constexpr std::string_view kSigns =
    " \xA0\t\n\v\f\r!\"#$%&()*,./:;?@[\\]^_`{|}~\xA1\xA6\xA8\xAF\xB4\xB8\xBF\x91\x92\x82\x93\x94\x84\x8B\x9B"
    "\xA2\xA3\xA4\xA5\x80+<=>\xB1\xAB\xBB\xD7\xF7\xA7\xA9\xAC\xAE\xB0\xB5\xB6\xB7\x85\x86\x87\x95\x89\x81\x8D"
    "\x8F\x90\x9D";
constexpr std::array<std::string_view, 36> kGroups{"0\xBC\xBD\xBE",
                                                   "1\xB9",
                                                   "2\xB2",
                                                   "3\xB3",
                                                   "4",
                                                   "5",
                                                   "6",
                                                   "7",
                                                   "8",
                                                   "9",
                                                   "aA=ªáÁ=àÀ=âÂ=äÄ=ãÃ=åÅ=",
                                                   "bB=",
                                                   "cC=çÇ=",
                                                   "dD=ðÐ=",
                                                   "eE=éÉ=èÈ=êÊ=ëË=",
                                                   "fF=\x83",
                                                   "gG=",
                                                   "hH=",
                                                   "iI=íÍ=ìÌ=îÎ=ïÏ=",
                                                   "jJ=",
                                                   "kK=",
                                                   "lL=",
                                                   "mM=",
                                                   "nN=ñÑ=",
                                                   "oO=ºóÓ=òÒ=ôÔ=öÖ=õÕ=øØ=",
                                                   "pP=",
                                                   "qQ=",
                                                   "rR=",
                                                   "sS=šŠ=",
                                                   "tT=þÞ=\x99",
                                                   "uU=úÚ=ùÙ=ûÛ=üÜ=",
                                                   "vV=",
                                                   "wW=",
                                                   "xX=",
                                                   "yY=ýÝ=ÿŸ=",
                                                   "zZ=žŽ="};

Weights makeWeights() {
    Weights weights{};
    std::uint8_t place = 0;
    for (const char sign : kSigns) weights[static_cast<unsigned char>(sign)] = {++place, 0};
    weights[0x88] = weights['^'];
    weights[0xA0] = {weights[' '].place, 1};
    for (const std::string_view group : kGroups) {
        ++place;
        std::uint8_t mark = 0;
        for (std::size_t i = 0; i < group.size(); ++i) {
            if (group[i] == '=') continue;
            weights[static_cast<unsigned char>(group[i])] = {place, mark};
            const bool pair = i + 2 < group.size() && group[i + 2] == '=';
            if (pair) weights[static_cast<unsigned char>(group[++i])] = {place, mark};
            ++mark;
        }
    }
    return weights;
}

const Weights& allWeights() {
    static const Weights weights = makeWeights();
    return weights;
}

Weight weightOf(const Weights& weights, char c) {
    return weights[static_cast<unsigned char>(c)];
}

bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

// Ligatures stand where their letters stand.
std::string_view lettersOf(const char& c) {
    switch (c) {
        case '\xDF': return "ss";  // ß
        case '\xE6':               // æ
        case '\xC6': return "ae";  // Æ
        case '\x9C':               // œ
        case '\x8C': return "oe";  // Œ
        default: return {&c, 1};
    }
}

// The weights of a text's characters, without those that are passed over.
class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}
    // Place 0 at the end.
    Weight next() {
        for (;;) {
            if (letters_.empty()) {
                if (text_.empty()) return {};
                letters_ = lettersOf(text_.front());
                text_.remove_prefix(1);
            }
            const Weight weight = weightOf(weights_, letters_.front());
            letters_.remove_prefix(1);
            if (weight.place != 0) return weight;
        }
    }

  private:
    const Weights& weights_ = allWeights();
    std::string_view text_;
    std::string_view letters_;
};

bool isJoiner(char c) {
    return c == '-' || c == '\'' || c == '\x96' || c == '\x97';
}

int countJoiners(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), isJoiner));
}

// Of texts that are alike but for hyphens and apostrophes: the one without comes first.
int compareJoiners(std::string_view a, std::string_view b) {
    return countJoiners(a) - countJoiners(b);
}

}  // namespace

// The same bytes have the same weights, and the paths of a list have most of theirs in common.
int compareTexts(std::string_view a, std::string_view b) {
    const auto same =
        static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
    Reader readerA(a.substr(same));
    Reader readerB(b.substr(same));
    int marks = 0;
    for (;;) {
        const Weight weightA = readerA.next();
        const Weight weightB = readerB.next();
        if (weightA.place != weightB.place) return weightA.place - weightB.place;
        if (weightA.place == 0) break;
        if (marks == 0) marks = weightA.mark - weightB.mark;
    }
    return marks != 0 ? marks : compareJoiners(a, b);
}

// The places, the marks, and the number of hyphens and apostrophes; no place is 0, which ends each part.
// Written into room that is there already: a list has thousands of long paths.
std::string orderKey(std::string_view text) {
    constexpr std::size_t kEnds = 6;
    const Weights& weights = allWeights();
    std::string key(2 * text.size() + kEnds, '\0');  // a ligature has two letters
    std::string marks(2 * text.size(), '\0');
    std::size_t count = 0;
    const auto add = [&](char letter) {
        const Weight weight = weightOf(weights, letter);
        key[count] = static_cast<char>(weight.place);
        marks[count] = static_cast<char>(weight.mark);
        if (weight.place != 0) ++count;  // else the next one takes its room
    };
    for (const char& c : text) {
        if (isAscii(c)) {
            add(c);  // no ligature, as nearly all
        } else {
            for (const char letter : lettersOf(c)) add(letter);
        }
    }
    key.resize(count);
    key.append(1, '\0').append(marks, 0, count).append(1, '\0');
    const auto joiners = static_cast<std::uint32_t>(countJoiners(text));
    for (const unsigned shift : {24u, 16u, 8u, 0u}) key += static_cast<char>(joiners >> shift);
    return key;
}

}  // namespace bromvale
