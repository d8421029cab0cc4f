// Registry files as the registry editor enters them, a line at a time: a line that is wrong costs nothing but
// itself.
#include "platform/offline/files/other_half.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/fuzz/reg_seeds.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

using offline::OtherHalf;
using offline::Registry;
using offline::RegistryKey;

std::string written(const Registry& registry) {
    std::size_t leftOut = 0;
    return regFileOf(registry, {}, leftOut);
}

// Names and texts may hold line breaks, which are no ends of a line where the file is whole.
bool hasLineBreakInside(Registry& registry) {
    for (std::size_t hive = 1; hive < offline::kHiveCount; ++hive) {
        std::vector<RegistryKey*> waiting{registry.root(hive)};
        while (!waiting.empty()) {
            RegistryKey* const key = waiting.back();
            waiting.pop_back();
            for (std::size_t i = 0; i < key->valueCount(); ++i) {
                const auto& value = key->value(i);
                if (value.name().find_first_of("\r\n") != std::string_view::npos) return true;
                if (value.data().bytes.find_first_of("\r\n") != std::string_view::npos) return true;
            }
            for (std::size_t i = 0; i < key->subKeyCount(); ++i)
                waiting.push_back(registry.tree().subKey(key, i));
        }
    }
    return false;
}

void run(std::string_view input) {
    const OtherHalf half;
    Registry merged(half);
    mergeRegText(input, merged);
    const std::string text = written(merged);
    Registry whole(half);
    require(!loadRegText(text, "", whole), "what was entered can be written and read");
    require(written(whole) == text, "and is the same");
    if (hasLineBreakInside(whole)) return;
    Registry byLines(half);
    mergeRegText(text + wideFile("kein Wert\r\n").substr(2), byLines);
    require(written(byLines) == text, "a bad line at the end costs nothing");
}

std::vector<std::string> seeds() {
    std::vector<std::string> files = regFileSeeds();
    files.emplace_back(
        "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\A]\r\n\"p\"=\"C:\\x\\y\"\r\nfalsch\r\n\"q\"=\"z\"\r\n");
    return files;
}

const KnownTarget kTarget({"reg_merge", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
