// Raw hives: reader, checker and deletion end, with a fault or HiveDamage; a hive that the checker finds
// whole can be read to its last byte, stands in the machine's registry without damage, and is whole again
// without a key.
#include "platform/offline/hives/hive.h"
#include "platform/offline/files/other_half.h"

#include <memory>

#include "platform/offline/hives/checker.h"
#include "platform/offline/hives/deletion.h"
#include "platform/offline/hives/mounted_hive.h"
#include "tests/fuzz/hive_input.h"
#include "tests/fuzz/target.h"
#include "tests/hives/made_hive.h"

namespace bromvale::fuzz {
namespace {

using namespace offline;

struct Walk {
    bool whole = false;
    std::vector<Cell> keys;  // the root first
    std::size_t values = 0;
};

Walk walkOf(std::string_view bytes) {
    Walk walk;
    try {
        const Hive hive{HiveBytes(bytes)};
        std::vector<Cell> waiting{hive.base().root};
        while (!waiting.empty()) {
            const HiveKey key = hive.key(waiting.back());
            waiting.pop_back();
            walk.keys.push_back(key.cell);
            require(walk.keys.size() <= bytes.size() / key_node::kName, "no walk sees a key twice");
            static_cast<void>(hive.classNameBytes(key));
            for (const Cell cell : hive.values(key)) static_cast<void>(hive.data(hive.value(cell)));
            walk.values += key.valueCount;
            for (const Cell subKey : hive.subKeys(key)) waiting.push_back(subKey);
        }
        walk.whole = true;
    } catch (const HiveDamage& damage) {
        require(*damage.what() != '\0', "damage is told");
    }
    return walk;
}

// All of it, as a scan would look at it.
void lookAtAll(Registry& registry, std::size_t mostKeys) {
    std::vector<RegistryKey*> waiting{registry.keyOf(std::string_view("HKEY_LOCAL_MACHINE\\Hive"))};
    std::size_t count = 0;
    while (!waiting.empty()) {
        RegistryKey* const key = waiting.back();
        waiting.pop_back();
        require(key != nullptr && ++count <= mostKeys, "no more keys than the file can hold");
        for (std::size_t i = 0; RegistryKey* const subKey = registry.tree().subKey(key, i); ++i)
            waiting.push_back(subKey);
    }
}

std::size_t damagesOfMounted(std::string_view bytes) {
    try {
        const OtherHalf half;
        Registry registry(half);
        const auto mounted = std::make_shared<MountedHive>(HiveImage(bytes));
        require(mountHive(registry, std::string_view("HKEY_LOCAL_MACHINE\\Hive"), mounted,
                          mounted->hive().base().root),
                "the place is one");
        lookAtAll(registry, bytes.size() / key_node::kName + 2);
        return mounted->damageCount();
    } catch (const HiveDamage&) {
        return 1;
    }
}

void run(std::string_view input) {
    Pieces pieces(input);
    const std::uint8_t choice = pieces.byte();
    std::string bytes = expanded(pieces.rest(), HiveFile::Hive);
    if (choice % 2 == 0) setChecksum(bytes);
    const HiveCheck check = checkHive(HiveBytes(bytes));
    const Walk walk = walkOf(bytes);
    const std::size_t damages = damagesOfMounted(bytes);
    if (!check.whole()) return;
    require(walk.whole && damages == 0, "what is whole can be read");
    require(walk.keys.size() == check.keys && walk.values == check.values, "reader and checker count alike");
    const Cell key = walk.keys[choice / 2 % walk.keys.size()];
    if (whyUndeletable(HiveBytes(bytes), key)) return;
    HiveImage image{std::string_view(bytes)};
    const std::size_t gone = deleteKeys(image, std::vector<Cell>{key});
    const HiveCheck after = checkHive(image.bytes());
    require(after.whole(), "it is whole without the key");
    require(gone > 0 && after.keys + gone == check.keys, "as many keys are left");
}

std::vector<std::string> seeds() {
    std::vector<std::string> made;
    for (const char* const kind : {"lf", "lh", "li"}) {
        MadeHive hive;
        hive.root.name = u"root";
        hive.root.list = {kind, 1};
        hive.root.className = u"class";
        for (const char16_t* const name : {u"a", u"b", u"\u4e00"})
            hive.root.subKeys.emplace_back().name = name;
        hive.root.subKeys[1].values = {{.name = u"v", .data = "12345678"},
                                       {.name = u"", .type = 4, .data = "1234"}};
        hive.securities.emplace_back(20, '\1');
        hive.root.subKeys[2].security = 1;
        made.push_back('\4' + compact(bytesOf(hive), HiveFile::Hive));
        hive.minorVersion = 3;
        if (std::string_view(kind) != "lh") made.push_back('\2' + compact(bytesOf(hive), HiveFile::Hive));
    }
    return made;
}

const KnownTarget kTarget({"hive", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
