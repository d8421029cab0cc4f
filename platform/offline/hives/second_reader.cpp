// The second reader: libhivex, in a process of its own. There our hive and the file that it opened are walked
// beside each other; the answer is how that ended, in a letter, then what there is to tell.
#include "platform/offline/hives/comparison.h"

#ifdef BROMVALE_HIVEX

#include <hivex.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "platform/offline/hives/child_process.h"
#include "platform/offline/hives/expected_tree.h"

namespace bromvale::offline {
namespace {

// What it refuses to give.
constexpr std::size_t kMostSubKeys = 70'000;
constexpr std::size_t kMostValues = 110'000;
constexpr std::size_t kMostData = 8'000'000;

constexpr std::chrono::minutes kPatience{5};

constexpr char kSame = 'S';
constexpr char kDifferent = 'D';
constexpr char kDamaged = 'H';  // ours can't be read

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class Of>
using Given = std::unique_ptr<Of, Free>;

bool hasHalfPair(std::u16string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] < 0xD800 || name[i] > 0xDFFF) continue;
        if (name[i] >= 0xDC00 || i + 1 == name.size()) return true;
        ++i;
        if (name[i] < 0xDC00 || name[i] > 0xDFFF) return true;
    }
    return false;
}

// As libhivex gives them: strings of C.
std::string secondName(std::u16string_view name) {
    return utf8Name(name.substr(0, name.find(u'\0')));
}

// A type may be any number, and this enumeration doesn't hold them all.
std::uint32_t numberOf(const hive_type& type) {
    std::uint32_t number = 0;
    static_assert(sizeof type == sizeof number);
    std::memcpy(&number, &type, sizeof number);
    return number;
}

std::string secondNameOf(const char* name) {
    return name != nullptr ? name : "";
}

class SecondComparison {
  public:
    SecondComparison(hive_h* other, const Hive& before, std::span<const Cell> gone)
        : expected_(before, gone), before_(before), other_(other) {}

    std::optional<std::string> firstDifference() {
        const hive_node_h root = hivex_root(other_);
        if (root == 0) return failed(before_.root(), "find the root");
        if (expected_.isGone(before_.base().root)) return "\\: the root itself is to go";
        waiting_.emplace_back(before_.base().root, root);
        while (!waiting_.empty()) {
            const auto [cell, node] = waiting_.back();
            waiting_.pop_back();
            if (auto difference = differenceOfKeys(before_.key(cell), node)) return difference;
        }
        return std::nullopt;
    }

    [[nodiscard]] const PassedOver& passedOver() const { return passedOver_; }

  private:
    std::optional<std::string> differenceOfKeys(const HiveKey& key, hive_node_h node) {
        if (canTell(key.nameBytes, key.name(), key.is(key_node::kFlagOneByteName))) {
            const Given<char> name(hivex_node_name(other_, node));
            if (name == nullptr) return failed(key, "read the name");
            if (secondName(key.name()) != name.get()) return aboutName(key, node);
        }
        if (key.lastWritten > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
            ++passedOver_.times;
        } else if (hivex_node_timestamp(other_, node) != static_cast<std::int64_t>(key.lastWritten)) {
            return expected_.about(key, "another time");
        }
        if (auto difference = differenceOfValues(key, node)) return difference;
        return differenceOfSubKeys(key, node);
    }

    bool canTell(std::string_view bytes, const std::u16string& name, bool oneByte) {
        const bool none = !oneByte && (bytes.size() % 2 != 0 || hasHalfPair(name));
        if (none || name.find(u'\0') != name.npos) ++passedOver_.names;
        return !none;
    }

    std::string failed(const HiveKey& key, const char* what) const {
        return expected_.about(key, std::string("can't ") + what + ": " + std::strerror(errno));
    }

    std::string aboutName(const HiveKey& key, hive_node_h node) const {
        if (key.cell == before_.base().root) return expected_.about(key, "another name");
        const HiveKey parent = before_.key(key.parent);
        const Given<hive_node_h> nodes(hivex_node_children(other_, hivex_node_parent(other_, node)));
        return subKeysDiffer(parent, nodes.get());
    }

    std::string subKeysDiffer(const HiveKey& key, const hive_node_h* nodes) const {
        std::vector<std::string> found;
        for (; nodes != nullptr && *nodes != 0; ++nodes)
            found.push_back(secondNameOf(Given<char>(hivex_node_name(other_, *nodes)).get()));
        return expected_.aboutSubKeys(key, found, secondName);
    }

    std::optional<std::string> differenceOfSubKeys(const HiveKey& key, hive_node_h node) {
        const std::vector<Cell> subKeys = expected_.subKeys(key);
        if (subKeys.size() > kMostSubKeys) {
            ++passedOver_.keyLists;
            return std::nullopt;
        }
        const Given<hive_node_h> nodes(hivex_node_children(other_, node));
        if (nodes == nullptr) return failed(key, "list the sub keys");
        std::size_t count = 0;
        while (nodes.get()[count] != 0) ++count;
        if (count != subKeys.size()) return subKeysDiffer(key, nodes.get());
        for (std::size_t i = count; i-- > 0;) waiting_.emplace_back(subKeys[i], nodes.get()[i]);
        return std::nullopt;
    }

    std::optional<std::string> differenceOfValues(const HiveKey& key, hive_node_h node) {
        const std::vector<Cell> values = before_.values(key);
        if (values.size() > kMostValues || key.is(key_node::kFlagPredefined)) {
            ++passedOver_.valueLists;
            return std::nullopt;
        }
        const Given<hive_value_h> others(hivex_node_values(other_, node));
        if (others == nullptr) return failed(key, "list the values");
        std::size_t count = 0;
        while (others.get()[count] != 0) ++count;
        if (count != values.size()) return valuesDiffer(key, others.get());
        for (std::size_t i = 0; i < count; ++i) {
            const HiveValue value = before_.value(values[i]);
            const hive_value_h other = others.get()[i];
            if (canTell(value.nameBytes, value.name(), isOneByte(value))) {
                const Given<char> name(hivex_value_key(other_, other));
                if (name == nullptr || secondName(value.name()) != name.get())
                    return valuesDiffer(key, others.get());
            }
            if (auto what = differenceOfContent(value, other)) return expected_.aboutValue(key, value, *what);
        }
        return std::nullopt;
    }

    static bool isOneByte(const HiveValue& value) {
        return (value.flags & value_node::kFlagOneByteName) != 0;
    }

    std::string valuesDiffer(const HiveKey& key, const hive_value_h* others) const {
        std::vector<std::string> found;
        for (; *others != 0; ++others)
            found.push_back(secondNameOf(Given<char>(hivex_value_key(other_, *others)).get()));
        return expected_.aboutValues(key, found, secondName);
    }

    std::optional<std::string> differenceOfContent(const HiveValue& value, hive_value_h other) {
        hive_type type{};
        std::size_t size = 0;
        const bool withData = (value.inside || value.size > 0) && value.size <= kMostData;
        Given<char> data;
        errno = 0;
        if (withData) {
            data.reset(hivex_value_value(other_, other, &type, &size));
            if (data == nullptr && errno != 0) return std::string("data: ") + std::strerror(errno);
        } else {
            ++passedOver_.data;
            if (hivex_value_type(other_, other, &type, &size) != 0)
                return std::string("type: ") + std::strerror(errno);
        }
        if (numberOf(type) != value.type) return "another type";
        const bool shorter = withData && isCutShort(value, other, size);
        if (shorter) ++passedOver_.data;
        if (size != value.size && !shorter) return "data of another length";
        if (withData && std::string_view(before_.data(value)).substr(0, size) != view(data, size))
            return "other data";
        return std::nullopt;
    }

    // Of the last piece of big data it takes the cell's size less eight and not less four: up to four bytes
    // fewer than there are where the cell is just as large as it must be. Windows makes these cells larger.
    bool isCutShort(const HiveValue& value, hive_value_h other, std::size_t given) const {
        if (value.size <= big_data::kPieceSize || before_.base().minor < big_data::kFromMinorVersion)
            return false;
        hive_type type{};
        std::size_t size = 0;
        return given < value.size && value.size - given <= 4 &&
               hivex_value_type(other_, other, &type, &size) == 0 && size == value.size;
    }

    // Of no bytes it gives null.
    static std::string_view view(const Given<char>& data, std::size_t size) {
        return data != nullptr ? std::string_view(data.get(), size) : std::string_view();
    }

    ExpectedTree expected_;
    const Hive& before_;
    hive_h* other_;
    std::vector<std::pair<Cell, hive_node_h>> waiting_;
    PassedOver passedOver_;
};

std::string answerFor(const std::string& file, const Hive& before, std::span<const Cell> gone) {
    ::unsetenv("HIVEX_DEBUG");
    hive_h* const other = hivex_open(file.c_str(), 0);
    if (other == nullptr) return kDifferent + ("can't open the file: " + std::string(std::strerror(errno)));
    try {
        SecondComparison comparison(other, before, gone);
        if (const auto difference = comparison.firstDifference()) return kDifferent + *difference;
        const PassedOver& numbers = comparison.passedOver();
        return kSame + std::string(reinterpret_cast<const char*>(&numbers), sizeof numbers);
    } catch (const HiveDamage& damage) {
        std::string place(reinterpret_cast<const char*>(&damage.place), sizeof damage.place);
        return kDamaged + place + damage.what();
    }
}

}  // namespace

bool hasSecondReader() {
    return true;
}

std::optional<std::string> differenceForSecondReader(const std::string& file, const Hive& before,
                                                     std::span<const Cell> gone, PassedOver* passedOver) {
    const ChildAnswer answer = answerOfChild([&] { return answerFor(file, before, gone); }, kPatience);
    if (!answer.problem.empty()) return "the second reader (libhivex) " + answer.problem;
    const HiveBytes text(answer.text);
    switch (text.size() > 0 ? answer.text[0] : '\0') {
        case kSame:
            if (passedOver != nullptr) *passedOver = text.number<PassedOver>(1);
            return std::nullopt;
        case kDifferent: return answer.text.substr(1);
        case kDamaged:
            throw HiveDamage(text.number<std::size_t>(1), answer.text.substr(1 + sizeof(std::size_t)));
        default: return "the second reader (libhivex) gave no answer";
    }
}

}  // namespace bromvale::offline

#else

namespace bromvale::offline {

bool hasSecondReader() {
    return false;
}

std::optional<std::string> differenceForSecondReader(const std::string&, const Hive&, std::span<const Cell>,
                                                     PassedOver*) {
    return "the program was built without its second reader of hives (package libhivex-dev)";
}

}  // namespace bromvale::offline

#endif
