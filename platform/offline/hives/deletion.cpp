#include "platform/offline/hives/deletion.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/key_lists.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::size_t kBinsPlace = kBinsStart + kCellHeaderSize;  // of the content of a cell at 0

class Deletion {
  public:
    explicit Deletion(HiveImage& image) : image_(image), hive_(image.bytes()) {}

    std::size_t deleteAll(std::span<const Cell> keys) {
        std::vector<Child> children = childrenOf(keys);
        for (auto from = children.begin(); from != children.end();) {
            const Cell parent = from->parent;
            const auto to =
                std::find_if(from, children.end(), [&](const Child& c) { return c.parent != parent; });
            deleteChildren(parent, {from, to});
            from = to;
        }
        releaseSecurities();
        finishBaseBlock();
        return deleted_;
    }

  private:
    struct Child {
        Cell parent = kNil;
        Cell key = kNil;
    };

    // Each once, those of one parent together and sorted.
    [[nodiscard]] std::vector<Child> childrenOf(std::span<const Cell> keys) const {
        std::vector<Cell> cells(keys.begin(), keys.end());
        std::ranges::sort(cells);
        cells.erase(std::unique(cells.begin(), cells.end()), cells.end());
        std::vector<Child> children;
        for (const Cell cell : cells) {
            const HiveKey key = hive_.key(cell);
            if (cell == hive_.base().root) throw HiveDamage(kBinsStart + cell, "the root can't be deleted");
            children.push_back({key.parent, cell});
        }
        std::ranges::stable_sort(children, {}, &Child::parent);
        return children;
    }

    void deleteChildren(Cell parent, std::span<const Child> children) {
        // It went with all below it.
        if (!inUse(parent)) return;
        std::vector<Cell> cells;
        for (const Child& child : children) cells.push_back(child.key);
        const HiveKey key = hive_.key(parent);
        const auto count = static_cast<std::uint32_t>(cells.size());
        const TakenOut taken = takeOutOfList(image_, hive_, key.subKeys, cells);
        if (taken.count != count || count > key.subKeyCount)
            throw HiveDamage(kBinsStart + parent, "a key is not in its parent's list");
        write(parent, key_node::kSubKeyCount, key.subKeyCount - count);
        if (taken.empty) write(parent, key_node::kSubKeys, kNil);
        for (const Cell cell : cells) freeTree(cell);
    }

    void freeTree(Cell top) {
        std::vector<Cell> pending{top};
        while (!pending.empty()) {
            const HiveKey key = hive_.key(pending.back());
            pending.pop_back();
            const std::vector<Cell> subKeys = hive_.subKeys(key);
            pending.insert(pending.end(), subKeys.begin(), subKeys.end());
            if (key.subKeyCount != 0) freeKeyList(image_, hive_, key.subKeys);
            freeValues(key);
            if (key.classNameSize != 0) free(key.className);
            ++released_[key.security];
            free(key.cell);
            ++deleted_;
        }
    }

    void freeValues(const HiveKey& key) {
        const std::vector<Cell> values = hive_.values(key);
        for (const Cell cell : values) {
            freeData(hive_.value(cell));
            free(cell);
        }
        if (!values.empty()) free(key.values);
    }

    void freeData(const HiveValue& value) {
        if (value.inside || value.size == 0) return;
        if (value.size > big_data::kPieceSize && hive_.base().minor >= big_data::kFromMinorVersion) {
            const HiveBytes head = hive_.cell(value.data);
            const Cell list = head.u32(big_data::kPieces);
            const HiveBytes pieces = hive_.cell(list);
            for (std::size_t i = 0; i < head.u16(big_data::kCount); ++i) free(pieces.u32(i * 4));
            free(list);
        }
        free(value.data);
    }

    void releaseSecurities() {
        for (const auto& [cell, uses] : released_) releaseSecurity(cell, uses);
    }

    void releaseSecurity(Cell cell, std::uint32_t uses) {
        namespace at = security_node;
        const HiveBytes node = hive_.cell(cell);
        const std::uint32_t count = node.u32(at::kUseCount);
        if (node.text(0, 2) != at::kSignature || count < uses)
            throw HiveDamage(node.place(), "security counts fewer keys than have it");
        write(cell, at::kUseCount, count - uses);
        if (count != uses) return;
        const Cell next = node.u32(at::kNext);
        const Cell previous = node.u32(at::kPrevious);
        static_cast<void>(hive_.cell(next));
        static_cast<void>(hive_.cell(previous));
        write(previous, at::kNext, next);
        write(next, at::kPrevious, previous);
        free(cell);
    }

    void finishBaseBlock() {
        namespace at = base_block;
        image_.write(at::kFirstSequence, hive_.base().firstSequence + 1);
        image_.write(at::kSecondSequence, hive_.base().secondSequence + 1);
        image_.write(at::kChecksum, baseBlockChecksum(image_.bytes()));
    }

    [[nodiscard]] bool inUse(Cell cell) const {
        return static_cast<std::int32_t>(image_.bytes().u32(kBinsStart + cell)) < 0;
    }
    void free(Cell cell) { freeCell(image_, hive_, cell); }
    void write(Cell cell, std::size_t at, std::uint32_t number) {
        image_.write(kBinsPlace + cell + at, number);
    }

    HiveImage& image_;
    Hive hive_;  // sees what was written into the image
    std::unordered_map<Cell, std::uint32_t> released_;
    std::size_t deleted_ = 0;
};

std::optional<std::string> whyUndeletableItself(const Hive& hive, const HiveKey& key) {
    if (key.cell == hive.base().root || key.is(key_node::kFlagRoot)) return "it is the hive's root";
    if (key.is(key_node::kFlagUndeletable)) return "Windows has marked it as not to be deleted";
    if (key.is(key_node::kFlagSymbolicLink)) return "it is a symbolic link to another key";
    if (key.is(key_node::kFlagPredefined)) return "it stands for a key elsewhere (a predefined handle)";
    return std::nullopt;
}

}  // namespace

std::optional<std::string> whyUndeletable(HiveBytes file, Cell key) {
    const Hive hive(file);
    std::size_t left = hive.base().binsSize / key_node::kName;
    std::vector<Cell> pending{key};
    while (!pending.empty()) {
        const HiveKey next = hive.key(pending.back());
        pending.pop_back();
        if (left-- == 0) throw HiveDamage(kBinsStart + key, "more keys are listed than the hive can hold");
        std::optional<std::string> why = whyUndeletableItself(hive, next);
        if (why && next.cell == key) return why;
        if (why) return "it holds the key \"" + utf8FromStored(storedFromWide(next.name())) + "\": " + *why;
        const std::vector<Cell> subKeys = hive.subKeys(next);
        pending.insert(pending.end(), subKeys.begin(), subKeys.end());
    }
    return std::nullopt;
}

std::size_t deleteKeys(HiveImage& image, std::span<const Cell> keys) {
    return keys.empty() ? 0 : Deletion(image).deleteAll(keys);
}

}  // namespace bromvale::offline
