#include "platform/offline/hives/disk/open_hive.h"

#include <algorithm>
#include <array>

#include "platform/offline/hives/hive_values.h"

namespace bromvale::offline {
namespace {

constexpr std::u16string_view kClassesEnd = u"_Classes";

// One that isn't there is told like one that can't be read: without it a dirty hive is another one.
void openLogs(const std::vector<FoundLog>& found, std::vector<HiveImage>& images, OpenHive& open,
              std::vector<HiveLog>& logs) {
    images.reserve(found.size());
    for (const FoundLog& log : found) {
        HiveImage image;
        if (const std::optional<std::string> problem = image.open(log.path)) {
            open.logProblems.push_back(log.path + ": " + *problem);
            continue;
        }
        images.push_back(std::move(image));
        logs.push_back({log.name, images.back().bytes()});
    }
}

}  // namespace

OpenHive openHive(const std::string& path, const std::vector<FoundLog>& found) {
    OpenHive open;
    if (const std::optional<std::string> problem = open.image.open(path)) {
        open.problem = *problem;
        return open;
    }
    if (open.image.size() == 0) {
        open.problem = "the file is empty";
        return open;
    }
    std::vector<HiveImage> images;
    std::vector<HiveLog> logs;
    openLogs(found, images, open, logs);
    try {
        open.replay = replayLogs(open.image, logs);
        open.hive.emplace(open.image.bytes());
        static_cast<void>(open.hive->root());
    } catch (const HiveDamage& damage) {
        open.hive.reset();
        open.problem = damage.what();
    }
    return open;
}

HiveContent contentOf(const Hive& hive) {
    const HiveKey root = hive.root();
    const std::u16string name = root.name();
    if (name.size() > kClassesEnd.size() &&
        sameName(std::u16string_view(name).substr(name.size() - kClassesEnd.size()), kClassesEnd))
        return HiveContent::UserClasses;
    std::vector<std::u16string> keys;
    for (const Cell cell : hive.subKeys(root)) keys.push_back(hive.key(cell).name());
    const auto has = [&](std::u16string_view wanted) {
        return std::ranges::any_of(keys, [&](const auto& key) { return sameName(key, wanted); });
    };
    if (has(u"Select")) return HiveContent::System;
    if (has(u"Microsoft") && has(u"Classes")) return HiveContent::Software;
    constexpr std::array<std::u16string_view, 5> kOfUsers{u"Control Panel", u"Environment", u"Console",
                                                          u"Keyboard Layout", u"AppEvents"};
    return has(u"Software") && std::ranges::any_of(kOfUsers, has) ? HiveContent::User : HiveContent::Unknown;
}

}  // namespace bromvale::offline
