// Each call to the host's files: what it is called in a message, which file it names, and what its failure
// becomes.
#include "platform/offline/hives/cleaning/host_files.h"

#include <fcntl.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>

#include "platform/offline/hives/cleaning/host_folder.h"
#include "tests/hives/hive_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

// Remembers the calls; those of that name fail.
class FailingFiles : public HostFiles {
  public:
    std::vector<std::string> calls;
    std::string failing;
    int number = 0;
    bool after = false;

  protected:
    int failureBefore(std::string_view call, const std::string& name) override {
        calls.push_back(std::string(call) + " " + name);
        return after || call != failing ? 0 : number;
    }
    int failureAfter(std::string_view call, const std::string&) override {
        return after && call == failing ? number : 0;
    }
};

class HostFilesCalls : public HiveFilesTest {
  protected:
    HostFilesCalls() {
        write("file", "abc");
        files_.calls.clear();
    }
    // The text of the failure, which has the system's number.
    std::string failureOf(const char* call, int number, const std::function<void()>& work) {
        files_.failing = call;
        files_.number = number;
        std::string told = "none";
        try {
            work();
        } catch (const HostFailure& failure) {
            told = failure.what();
            EXPECT_EQ(number, failure.number);
        }
        files_.failing.clear();
        return told;
    }
    FailingFiles files_;
    const HostHandle folder_ = files_.openFolder(HiveFilesTest::folder().string());
};

TEST_F(HostFilesCalls, TellTheirNameTheFileAndTheReason) {
    struct Row {
        const char* call;
        std::string name;
        std::function<void()> work;
    };
    const HostHandle file = files_.create(folder_, "new");
    const struct stat state = *files_.state(folder_, "file");
    char buffer[4];
    const Row rows[] = {
        {"open folder", "/", [&] { files_.openFolder("/"); }},
        {"open", "file", [&] { files_.openFile(folder_, "file"); }},
        {"create", "other", [&] { files_.create(folder_, "other"); }},
        {"read", "n", [&] { files_.read(file, "n", buffer, 4); }},
        {"write", "n", [&] { files_.write(file, "n", "x"); }},
        {"sync", "n", [&] { files_.sync(file, "n"); }},
        {"rename", "file", [&] { files_.rename(folder_, "file", "to"); }},
        {"link", "file", [&] { files_.link(folder_, "file", "to"); }},
        {"remove", "file", [&] { files_.remove(folder_, "file"); }},
        {"look at", "file", [&] { static_cast<void>(files_.state(folder_, "file")); }},
        {"list", ".", [&] { static_cast<void>(files_.names(folder_)); }},
        {"ask for space", ".", [&] { static_cast<void>(files_.space(folder_)); }},
        {"lock", ".", [&] { static_cast<void>(files_.lock(folder_)); }},
        {"give away", "n", [&] { files_.setOwner(file, "n", 0, 0); }},
        {"set the mode of", "n", [&] { files_.setMode(file, "n", 0600); }},
        {"set the times of", "n", [&] { files_.setTimes(file, "n", state); }},
        {"read the attribute", "a", [&] { static_cast<void>(files_.attribute(file, "a")); }},
        {"set the attribute", "a", [&] { files_.setAttribute(file, "a", "x"); }},
    };
    for (const Row& row : rows) {
        files_.calls.clear();
        EXPECT_EQ(std::string(row.call) + " \"" + row.name + "\": Input/output error",
                  failureOf(row.call, EIO, row.work));
        EXPECT_EQ((std::vector<std::string>{std::string(row.call) + " " + row.name}), files_.calls);
    }
    EXPECT_EQ("list the attributes of \"\": Input/output error",
              failureOf("list the attributes", EIO, [&] { static_cast<void>(files_.attributes(file)); }));
    EXPECT_TRUE(fs::exists(HiveFilesTest::folder() / "file"));
    EXPECT_FALSE(fs::exists(HiveFilesTest::folder() / "to"));
}

// A failure after the work is one as well.
TEST_F(HostFilesCalls, MayFailAlthoughTheyHaveDoneTheirWork) {
    files_.after = true;
    EXPECT_EQ("rename \"file\": Input/output error",
              failureOf("rename", EIO, [&] { files_.rename(folder_, "file", "to"); }));
    EXPECT_TRUE(fs::exists(HiveFilesTest::folder() / "to"));
}

TEST_F(HostFilesCalls, FailAsTheSystemSays) {
    EXPECT_EQ("open folder \"/none\": No such file or directory",
              failureOf("", ENOENT, [&] { files_.openFolder("/none"); }));
    EXPECT_EQ("open folder \"/dev/null\": Not a directory",
              failureOf("", ENOTDIR, [&] { files_.openFolder("/dev/null"); }));
    EXPECT_EQ("create \"file\": File exists", failureOf("", EEXIST, [&] { files_.create(folder_, "file"); }));
    EXPECT_EQ("remove \"none\": No such file or directory",
              failureOf("", ENOENT, [&] { files_.remove(folder_, "none"); }));
    fs::create_symlink("file", HiveFilesTest::folder() / "link");
    EXPECT_EQ("open \"link\": Too many levels of symbolic links",
              failureOf("", ELOOP, [&] { files_.openFile(folder_, "link"); }));
    EXPECT_EQ(std::nullopt, files_.state(folder_, "none"));
    EXPECT_TRUE(S_ISLNK(files_.state(folder_, "link")->st_mode));
}

TEST_F(HostFilesCalls, ReadAndWriteNoMoreThanAPieceAtATime) {
    files_.piece = 3;
    {
        const HostHandle file = files_.create(folder_, "new");
        files_.calls.clear();
        files_.write(file, "new", "abcdefgh");
        EXPECT_EQ(3u, files_.calls.size());
        files_.write(file, "new", "");
        EXPECT_EQ(3u, files_.calls.size());
    }
    EXPECT_EQ("abcdefgh", bytesOf(HiveFilesTest::folder() / "new"));
    const HostHandle file = files_.openFile(folder_, "new");
    char buffer[9] = {};
    EXPECT_EQ(3u, files_.read(file, "new", buffer, 8));
    EXPECT_EQ(2u, files_.read(file, "new", buffer + 3, 2));
    EXPECT_EQ(3u, files_.read(file, "new", buffer + 5, 8));
    EXPECT_STREQ("abcdefgh", buffer);
    EXPECT_EQ(0u, files_.read(file, "new", buffer, 8));
}

TEST_F(HostFilesCalls, ListNamesInOrder) {
    write("b", "");
    write("a", "");
    EXPECT_EQ((std::vector<std::string>{".", "..", "a", "b", "file"}), files_.names(folder_));
    EXPECT_EQ(5u, files_.names(folder_).size()) << "a second time";
}

TEST_F(HostFilesCalls, WhatMayNotBeWrittenIsNoFailure) {
    EXPECT_TRUE(files_.mayWrite(folder_));
    for (const int number : {EACCES, EROFS, EIO}) {
        files_.number = number;
        files_.failing = "ask for access";
        EXPECT_FALSE(files_.mayWrite(folder_));
    }
    EXPECT_EQ("ask for access .", files_.calls.back());
}

TEST_F(HostFilesCalls, AFileSystemWithoutLocksIsNoReasonAgainstIt) {
    files_.failing = "lock";
    for (const int number : {ENOTSUP, ENOSYS, ENOLCK, EINVAL}) {
        files_.number = number;
        EXPECT_TRUE(files_.lock(folder_)) << number;
    }
    files_.number = EWOULDBLOCK;
    EXPECT_FALSE(files_.lock(folder_));
    files_.failing.clear();
    {
        const HostHandle other = files_.openFolder(HiveFilesTest::folder().string());
        EXPECT_TRUE(files_.lock(other));
        EXPECT_FALSE(files_.lock(folder_));
    }
    EXPECT_TRUE(files_.lock(folder_)) << "the lock goes with the handle";
}

TEST_F(HostFilesCalls, AttributesThatAreNotThereAreNone) {
    const HostHandle file = files_.openFile(folder_, "file");
    EXPECT_EQ(std::nullopt, files_.attribute(file, "user.none"));
    for (const int number : {ENODATA, ENOTSUP, EOPNOTSUPP}) {
        files_.number = number;
        files_.failing = "read the attribute";
        EXPECT_EQ(std::nullopt, files_.attribute(file, "user.word"));
        files_.failing = "list the attributes";
        EXPECT_TRUE(files_.attributes(file).empty());
    }
    files_.failing.clear();
    const std::string path = (HiveFilesTest::folder() / "file").string();
    if (::setxattr(path.c_str(), "user.word", "val\0ue", 6, 0) != 0) GTEST_SKIP() << "no attributes here";
    ASSERT_EQ(0, ::setxattr(path.c_str(), "user.other", "", 0, 0));
    EXPECT_EQ(std::string("val\0ue", 6), files_.attribute(file, "user.word"));
    EXPECT_EQ("", files_.attribute(file, "user.other"));
    std::vector<std::string> names = files_.attributes(file);
    std::erase_if(names, [](const std::string& name) { return !name.starts_with("user."); });
    std::ranges::sort(names);
    EXPECT_EQ((std::vector<std::string>{"user.other", "user.word"}), names);
}

TEST_F(HostFilesCalls, ModeTimesAndAttributesAreSet) {
    const HostHandle file = files_.create(folder_, "new");
    struct stat state = *files_.state(folder_, "new");
    EXPECT_EQ(0600u, state.st_mode & 07777u);
    files_.setMode(file, "new", S_IFREG | 04751);
    state.st_atim = {1'000'000'000, 5};
    state.st_mtim = {1'100'000'000, 7};
    files_.setTimes(file, "new", state);
    const struct stat after = *files_.state(folder_, "new");
    EXPECT_EQ(04751u, after.st_mode & 07777u);
    EXPECT_EQ(1'000'000'000, after.st_atim.tv_sec);
    EXPECT_EQ(1'100'000'000, after.st_mtim.tv_sec);
    EXPECT_EQ(7, after.st_mtim.tv_nsec);
}

TEST_F(HostFilesCalls, SpaceIsThatWhichWeMayFill) {
    const HostSpace ours = files_.space(folder_);
    EXPECT_GT(ours.free, 0u);
    EXPECT_FALSE(ours.readOnly);
    struct statvfs state {};
    ASSERT_EQ(0, ::statvfs(HiveFilesTest::folder().c_str(), &state));
    files_.user = 4711;
    EXPECT_EQ(0u, files_.space(folder_).free % state.f_frsize);
    EXPECT_TRUE(files_.space(files_.openFolder("/proc/self")).free == 0u);
}

TEST_F(HostFilesCalls, HandlesCloseWhatTheyHold) {
    const int next = ::dup(STDIN_FILENO);
    ::close(next);
    {
        HostHandle one = files_.openFile(folder_, "file");
        HostHandle other = std::move(one);
        EXPECT_EQ(-1, one.number());  // NOLINT(bugprone-use-after-move): it is what is asked
        EXPECT_EQ(next, other.number());
        one = std::move(other);
        EXPECT_EQ(next, one.number());
        static_cast<void>(files_.names(folder_));
    }
    const int again = ::dup(STDIN_FILENO);
    ::close(again);
    EXPECT_EQ(next, again);
}

// A program that is started meanwhile has none of them.
TEST_F(HostFilesCalls, HandlesAreNotInherited) {
    const HostHandle created = files_.create(folder_, "new");
    const HostHandle opened = files_.openFile(folder_, "file");
    for (const HostHandle* const handle : {&folder_, &created, &opened})
        EXPECT_EQ(FD_CLOEXEC, ::fcntl(handle->number(), F_GETFD));
}

class HostFolderTest : public HostFilesCalls {
  protected:
    HostFolder folder{files_, HiveFilesTest::folder().string()};
};

TEST_F(HostFolderTest, NamesPathsInIt) {
    EXPECT_EQ(folder.path() + "/x", folder.pathOf("x"));
    EXPECT_EQ("/x", HostFolder(files_, "/").pathOf("x"));
}

TEST_F(HostFolderTest, ReadsPlainFilesAlone) {
    EXPECT_EQ("abc", folder.read("file"));
    EXPECT_EQ("read \"" + folder.pathOf("none") + "\": No such file or directory",
              failureOf("", ENOENT, [&] { static_cast<void>(folder.read("none")); }));
    fs::create_symlink("file", folder.pathOf("link"));
    EXPECT_EQ("read \"" + folder.pathOf("link") + "\": Invalid argument",
              failureOf("", EINVAL, [&] { static_cast<void>(folder.read("link")); }));
    files_.piece = 2;
    write("longer", "abcdefghi");
    EXPECT_EQ("abcdefghi", folder.read("longer"));
    write("empty", "");
    EXPECT_EQ("", folder.read("empty"));
}

// By another one, between the look at its size and its bytes.
TEST_F(HostFolderTest, ReadsAFileThatGrowsMeanwhileToItsEnd) {
    class GrowingFiles : public HostFiles {
      public:
        std::string file;

      protected:
        int failureBefore(std::string_view call, const std::string&) override {
            if (call == "open") std::ofstream(file, std::ios::app) << std::string(1000, 'g');
            return 0;
        }
    };
    GrowingFiles files;
    files.file = folder.pathOf("file");
    EXPECT_EQ("abc" + std::string(1000, 'g'), HostFolder(files, folder.path()).read("file"));
}

TEST_F(HostFolderTest, HoldsAFileOfThatPrintAlone) {
    EXPECT_TRUE(folder.holds("file", printOf("abc")));
    EXPECT_FALSE(folder.holds("file", printOf("abd")));
    EXPECT_FALSE(folder.holds("file", printOf("ab")));
    EXPECT_FALSE(folder.holds("file", {4, printOf("abc").hash}));
    EXPECT_FALSE(folder.holds("none", printOf("")));
    fs::create_symlink("file", folder.pathOf("lnk"));
    EXPECT_FALSE(folder.holds("lnk", printOf("abc")));
    EXPECT_FALSE(folder.holds("lnk", printOf("file")));
}

TEST_F(HostFolderTest, ANewFileIsOnTheDiskAndLikeItsModel) {
    const std::string model = folder.pathOf("file");
    const timespec old[2] = {{1'000'000'000, 0}, {1'100'000'000, 0}};
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, model.c_str(), old, 0));
    fs::permissions(model, fs::perms(0640));
    files_.calls.clear();
    folder.create("plain", "x");
    EXPECT_EQ((std::vector<std::string>{"create plain", "write plain", "sync plain"}), files_.calls);
    folder.create("like", "x", "file");
    EXPECT_EQ("sync like", files_.calls.back());
    folder.create("timed", "x", "file", true);
    EXPECT_EQ("sync timed", files_.calls.back());
    EXPECT_EQ(0600u, folder.state("plain")->st_mode & 07777u);
    EXPECT_EQ(0640u, folder.state("like")->st_mode & 07777u);
    EXPECT_NE(1'100'000'000, folder.state("like")->st_mtim.tv_sec);
    EXPECT_EQ(1'100'000'000, folder.state("timed")->st_mtim.tv_sec);
    EXPECT_EQ("look at \"" + folder.pathOf("none") + "\": No such file or directory",
              failureOf("", ENOENT, [&] { folder.create("unlike", "x", "none"); }));
}

// What a model already is like is not set once more: not every file system lets it be set.
TEST_F(HostFolderTest, SetsOnlyWhatDiffers) {
    files_.calls.clear();
    folder.create("first", "x");
    fs::permissions(folder.pathOf("file"), fs::perms(0600));
    folder.create("like", "x", "file");
    for (const std::string& call : files_.calls) {
        EXPECT_FALSE(call.starts_with("give away") || call.starts_with("set ")) << call;
    }
    EXPECT_NE(files_.calls.end(), std::ranges::find(files_.calls, "read the attribute system.ntfs_acl"));
    EXPECT_NE(files_.calls.end(), std::ranges::find(files_.calls, "read the attribute system.ntfs_attrib"));
}

TEST_F(HostFolderTest, KeepsAFileUnderASecondName) {
    folder.keepAs("file", "second");
    EXPECT_EQ(2u, folder.state("file")->st_nlink);
    EXPECT_EQ("link \"file\": File exists", failureOf("", EEXIST, [&] { folder.keepAs("file", "second"); }));
    files_.failing = "link";
    files_.number = EPERM;
    write("third.half", "left by another one");
    folder.keepAs("file", "third");
    EXPECT_EQ("abc", folder.read("third"));
    EXPECT_EQ(1u, folder.state("third")->st_nlink);
    EXPECT_EQ(folder.state("file")->st_mtim.tv_nsec, folder.state("third")->st_mtim.tv_nsec);
    EXPECT_FALSE(folder.has("third.half"));
}

TEST_F(HostFolderTest, RemovesWhatIsThere) {
    folder.remove("file");
    EXPECT_FALSE(folder.has("file"));
    folder.remove("file");
}

TEST_F(HostFolderTest, AFolderThatHasNothingToWriteIsOnTheDisk) {
    files_.failing = "sync";
    files_.number = EINVAL;
    folder.sync();
    EXPECT_EQ("sync \"" + folder.path() + "\": Input/output error",
              failureOf("sync", EIO, [&] { folder.sync(); }));
}

TEST_F(HostFolderTest, TheSameFolderIsOpenedOnceUnderWhateverPath) {
    HostFolders folders(files_);
    fs::create_directory(folder.pathOf("below"));
    fs::create_directory_symlink(folder.path(), folder.pathOf("again"));
    HostFolder& first = folders.at(folder.path());
    EXPECT_EQ(&first, &folders.at(folder.path()));
    EXPECT_EQ(&first, &folders.at(folder.pathOf("again")));
    EXPECT_EQ(&first, &folders.at(folder.pathOf("again")));
    EXPECT_NE(&first, &folders.at(folder.pathOf("below")));
    EXPECT_EQ(&first, &folders.at(folder.pathOf("again/.")));
    EXPECT_EQ(2u, folders.all().size());
    EXPECT_EQ(nullptr, folders.lockAll());
    HostFolders others(files_);
    HostFolder& busy = others.at(folder.pathOf("below"));
    EXPECT_EQ(&busy, others.lockAll());
    EXPECT_EQ(first.device(), busy.device());
    EXPECT_NE(dev_t{}, first.device());
}

}  // namespace
}  // namespace bromvale::offline
