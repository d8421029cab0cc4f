// Opening a hive's file.
#include "platform/offline/hives/image.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <new>

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

// One that may read it may not always hide that he did.
TEST_F(HiveImageTest, AFileOfSomebodyElseIsReadAsWell) {
    const std::string file = "/etc/passwd";
    struct stat state {};
    if (::stat(file.c_str(), &state) != 0 || state.st_uid != 0) GTEST_SKIP() << "no file of root's";
    const uid_t we = ::geteuid();
    ASSERT_TRUE(we != 0 || ::seteuid(65534) == 0);
    HiveImage image;
    const std::optional<std::string> problem = image.open(file);
    ASSERT_TRUE(we != 0 || ::seteuid(we) == 0);
    EXPECT_EQ(std::nullopt, problem);
    EXPECT_EQ(bytesOf(file), image.bytes().all());
}

TEST_F(HiveImageTest, ReadingLeavesNoTraceInTheFilesTimes) {
    const std::string file = write("hive", "abc");
    const timespec old[2] = {{1'000'000'000, 0}, {1'100'000'000, 0}};
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, file.c_str(), old, 0));
    HiveImage image;
    ASSERT_EQ(std::nullopt, image.open(file));
    EXPECT_EQ("abc", image.bytes().all());
    struct stat state {};
    ASSERT_EQ(0, ::stat(file.c_str(), &state));
    EXPECT_EQ(1'000'000'000, state.st_atim.tv_sec);
}

TEST_F(HiveImageTest, WhatIsWrittenNeverReachesTheFile) {
    const std::string file = write("hive", "abcdefgh");
    HiveImage image;
    ASSERT_EQ(std::nullopt, image.open(file));
    image.write(1, "XY");
    image.write(4, std::uint32_t{0x34333231});
    image.write16(0, 0x4241);
    EXPECT_EQ("ABYd1234", image.bytes().all());
    EXPECT_EQ("abcdefgh", bytesOf(file));
}

TEST_F(HiveImageTest, NothingIsWrittenBeyondTheEnd) {
    HiveImage image(std::string_view("abcd"));
    image.write(4, "");
    image.write(2, "CD");
    EXPECT_THROW(image.write(3, "XY"), HiveDamage);
    EXPECT_THROW(image.write(5, ""), HiveDamage);
    EXPECT_THROW(image.write(1, std::uint32_t{0}), HiveDamage);
    EXPECT_THROW(image.write16(3, 0), HiveDamage);
    EXPECT_EQ("abCD", image.bytes().all());
}

TEST_F(HiveImageTest, GrowsWithZerosAndForgetsWhatItLoses) {
    HiveImage image(std::string_view("abcd"));
    image.resize(8192);
    EXPECT_EQ("abcd" + std::string(8188, '\0'), image.bytes().all());
    image.resize(2);
    EXPECT_EQ("ab", image.bytes().all());
    image.resize(4096);
    EXPECT_EQ("ab" + std::string(4094, '\0'), image.bytes().all());
    image.write(4095, "z");
    image.resize(4097);
    EXPECT_EQ("ab" + std::string(4093, '\0') + "z" + std::string(1, '\0'), image.bytes().all());
    image.resize(0);
    EXPECT_EQ("", image.bytes().all());
}

TEST_F(HiveImageTest, AMovedOneTakesItsBytesAlong) {
    HiveImage image(std::string_view("abcd"));
    HiveImage other(std::move(image));
    EXPECT_EQ("abcd", other.bytes().all());
    HiveImage third;
    third = std::move(other);
    EXPECT_EQ("abcd", third.bytes().all());
    third.resize(5000);
    EXPECT_EQ(5000u, third.size());
}

TEST_F(HiveImageTest, OpenedAgainHoldsTheOtherFileAlone) {
    HiveImage image;
    ASSERT_EQ(std::nullopt, image.open(write("first", std::string(10000, 'f'))));
    ASSERT_EQ(std::nullopt, image.open(write("second", "s")));
    EXPECT_EQ("s", image.bytes().all());
    image.resize(4097);
    EXPECT_EQ("s" + std::string(4096, '\0'), image.bytes().all());
    EXPECT_NE(std::nullopt, image.open(folder().string()));
    EXPECT_EQ("", image.bytes().all());
}

TEST_F(HiveImageTest, ThatNoMemoryHoldsIsAnError) {
    HiveImage image(std::string_view("abcd"));
    EXPECT_THROW(image.resize(std::size_t{1} << 60), std::bad_alloc);
    EXPECT_EQ("abcd", image.bytes().all());
}

TEST_F(HiveImageTest, LeavesNothingMapped) {
    const std::string file = write("hive", "abc");
    const auto isMapped = [&] { return bytesOf("/proc/self/maps").find(file) != std::string::npos; };
    {
        HiveImage image;
        ASSERT_EQ(std::nullopt, image.open(file));
        EXPECT_TRUE(isMapped());
        ASSERT_EQ(std::nullopt, image.open(write("other", "x")));
        EXPECT_FALSE(isMapped());
        ASSERT_EQ(std::nullopt, image.open(file));
    }
    EXPECT_FALSE(isMapped());
}

// No file stays open, whatever became of it: after so many the next one could not be.
TEST_F(HiveImageTest, LeavesNoFileOpen) {
    const std::string file = write("hive", "abc");
    const int before = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(before);
    for (const std::string& path : {file, folder().string(), std::string("/dev/null"), write("empty", "")}) {
        HiveImage image;
        static_cast<void>(image.open(path));
        const int after = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ::close(after);
        EXPECT_EQ(before, after) << path;
    }
}

}  // namespace
}  // namespace bromvale::offline
