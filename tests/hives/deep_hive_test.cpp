// Keys below keys, deeper than a stack is: nothing here goes down into a hive by calling itself.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

#include "platform/offline/hives/deletion.h"
#include "tests/hives/hive_faults.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

constexpr std::size_t kDepth = 3000;
constexpr std::size_t kSmallStack = std::size_t{256} * 1024;  // less than 90 bytes a level

std::string deepHive() {
    MadeKey deepest;
    deepest.name = u"k";
    for (std::size_t i = 0; i < kDepth; ++i) {
        MadeKey above;
        above.name = u"k";
        above.subKeys.push_back(std::move(deepest));
        deepest = std::move(above);
    }
    MadeHive hive;
    hive.root = std::move(deepest);
    return bytesOf(hive);
}

void onSmallStack(std::function<void()> work) {
    const auto run = [](void* given) -> void* {
        (*static_cast<std::function<void()>*>(given))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kSmallStack);
    pthread_t thread{};
    ASSERT_EQ(0, pthread_create(&thread, &attributes, run, &work));
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(DeepHive, IsCheckedAndDeletedOnASmallStack) {
    const std::string bytes = deepHive();
    const Cell top = cellOf(bytes, u"k");
    HiveImage image(bytes);
    onSmallStack([&] {
        EXPECT_EQ("", faultsOf(image.bytes().all()));
        EXPECT_FALSE(whyUndeletable(image.bytes(), top).has_value());
        EXPECT_EQ(kDepth, deleteKeys(image, {{top}}));
        EXPECT_EQ("", faultsOf(image.bytes().all()));
    });
}

}  // namespace
}  // namespace bromvale::offline
