// Opening a hive's file.
#include "platform/offline/hives/image.h"

#include <filesystem>

#include "tests/hives/hive_files.h"

namespace bromvale::offline {
namespace {

using HiveImageTest = HiveFilesTest;

TEST_F(HiveImageTest, OfAPlainFileHasItsBytes) {
    HiveImage image;
    EXPECT_EQ(std::nullopt, image.open(write("hive", "abc")));
    EXPECT_EQ("abc", image.bytes().text(0, 3));
    EXPECT_EQ(3u, image.bytes().size());
    EXPECT_EQ(std::nullopt, image.open(write("empty", "")));
    EXPECT_EQ(0u, image.bytes().size());
}

TEST_F(HiveImageTest, WhatIsNoneSaysWhy) {
    HiveImage image;
    EXPECT_EQ("No such file or directory", image.open((folder() / "fehlt").string()));
    EXPECT_EQ("Is a directory", image.open(folder().string()));
    EXPECT_EQ("it is no plain file", image.open("/dev/null"));
}

// The kernel's own files say that they are plain ones and can't be mapped.
TEST_F(HiveImageTest, AFileThatCannotBeMappedSaysWhy) {
    const char* const file = "/sys/kernel/uevent_seqnum";
    if (!std::filesystem::exists(file)) GTEST_SKIP() << "no " << file << " here";
    HiveImage image;
    EXPECT_EQ("No such device", image.open(file));
    EXPECT_EQ(0u, image.bytes().size());
}

}  // namespace
}  // namespace bromvale::offline
