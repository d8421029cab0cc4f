// Registries of Windows 95 to ME: what can be told of a file before the library reads it, and the process in
// which it does.
#include "platform/offline/hives/disk/creg.h"

#include <algorithm>
#include <optional>

#include "platform/offline/hives/bytes.h"
#include "platform/offline/hives/child_process.h"
#include "platform/offline/hives/disk/creg_parts.h"
#include "platform/offline/hives/image.h"

namespace bromvale::offline {
namespace {

constexpr std::string_view kSignature = "CREG";

// A whole registry is read in less than a second.
constexpr std::chrono::seconds kPatience{20};

// The list of keys, by which most circles are found before the library walks in them.
namespace key_names {
constexpr std::size_t kStart = 32;  // of the file; offsets count from here
constexpr std::string_view kSignature = "RGKN";
constexpr std::size_t kRoot = 8;
constexpr std::size_t kFirstChild = 16;
constexpr std::size_t kNextBrother = 20;
constexpr std::uint32_t kNone = 0xFFFFFFFFu;
}  // namespace key_names

std::optional<std::string> whyNoTree(HiveBytes file) {
    try {
        if (file.text(key_names::kStart, 4) != key_names::kSignature) return "the list of keys is missing";
        const HiveBytes list = file.part(key_names::kStart, file.size() - key_names::kStart);
        std::vector<bool> seen(list.size());
        std::vector<std::uint32_t> pending{list.u32(key_names::kRoot)};
        while (!pending.empty()) {
            const std::uint32_t at = pending.back();
            pending.pop_back();
            if (at == key_names::kNone) continue;
            const HiveBytes entry = list.part(at, kKeyNameSize);
            if (seen[at]) return "two keys have the same sub key, or a key leads back to itself";
            const auto place = seen.begin() + static_cast<std::ptrdiff_t>(at);
            if (std::find(place, place + kKeyNameSize, true) != place + kKeyNameSize)
                return "two keys lie on each other";
            std::fill(place, place + kKeyNameSize, true);
            pending.push_back(entry.u32(key_names::kFirstChild));
            pending.push_back(entry.u32(key_names::kNextBrother));
        }
    } catch (const HiveDamage& damage) {
        return damage.what();
    }
    return std::nullopt;
}

CregAnswer readInChild(const std::string& path, HiveBytes file, UINT codePage) {
    if (const std::optional<std::string> problem = whyNoTree(file)) return *problem;
    const ChildAnswer answer =
        answerOfChild([&] { return bytesOf(readByLibrary(path, file.size(), codePage)); }, kPatience);
    if (!answer.problem.empty()) return "the process that read it " + answer.problem;
    try {
        return answerIn(answer.text);
    } catch (const HiveDamage&) {
        return "the process that read it told only a part";
    }
}

}  // namespace

bool isCreg(std::string_view start) {
    return start.starts_with(kSignature);
}

std::variant<CregTree, std::string> readCreg(const std::string& path, UINT codePage) {
    HiveImage image;
    if (const std::optional<std::string> problem = image.open(path)) return *problem;
    if (!isCreg(image.bytes().all())) return "the file does not begin with \"CREG\"";
    return readInChild(path, image.bytes(), codePage);
}

}  // namespace bromvale::offline
