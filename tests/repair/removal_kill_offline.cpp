// The process is ended at every platform call of a removal in turn. Whatever the moment: a key that is gone
// has its whole record in the file.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/offline/machine.h"
#include "tests/repair/removal_fixture.h"

namespace bromvale::testing {
namespace {

namespace fs = std::filesystem;

constexpr int kEnded = 0;
constexpr int kKilled = 9;
const Texts kNames{"A", "B", "C", "D"};

class KillTest : public RemovalTest {
  protected:
    KillTest() {
        std::string pattern = (fs::temp_directory_path() / "bromvale-kill-XXXXXX").string();
        host_ = mkdtemp(pattern.data());
        fs::create_directories(host_ / "Programme/Bromvale");
        offline::machine().drives.addFolder('C', host_.string());
        for (const std::string& name : kNames) addKey(name);
    }
    ~KillTest() override { fs::remove_all(host_); }

    struct Outcome {
        int status = -1;
        std::string gone;  // names of the keys that were deleted at the end
    };

    // Runs the removal in a process of its own that ends at the nth platform call. The registry lives in that
    // process, so it tells what is gone in its last moment; the files are on the disk.
    Outcome removeAndKillAt(unsigned long nth, bool marked) {
        fs::remove_all(host_ / "Programme/Bromvale/Backup");
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            const auto tell = [&](int status) {
                offline::faults().clear();
                for (const std::string& name : kNames) {
                    if (!offline::machine().registry.exists("HKEY_LOCAL_MACHINE\\Software\\Probe\\" + name))
                        static_cast<void>(!write(ends[1], name.data(), 1));
                }
                _exit(status);
            };
            unsigned long calls = 0;
            offline::faults().observe([&](std::string_view) {
                if (++calls == nth) tell(kKilled);
            });
            if (marked) {
                removeMarked();
            } else {
                form().ProblemeEntfernen();
            }
            tell(kEnded);
        }
        close(ends[1]);
        Outcome outcome;
        char name = 0;
        while (read(ends[0], &name, 1) == 1) outcome.gone += name;
        close(ends[0]);
        int status = 0;
        waitpid(child, &status, 0);
        outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return outcome;
    }

    std::string fileOnDisk() const {
        std::string bytes;
        const fs::path backup = host_ / "Programme/Bromvale/Backup";
        if (!fs::exists(backup)) return bytes;
        for (const auto& entry : fs::directory_iterator(backup)) {
            std::ifstream in(entry.path(), std::ios::binary);
            bytes.append(std::istreambuf_iterator<char>(in), {});
        }
        return bytes;
    }

    void killAtEveryCall(bool marked) {
        if (marked) {
            for (int row = 1; row <= list().count(); ++row) list().item(row).setSelected(true);
        }
        std::string gone;
        unsigned long kills = 0;
        for (unsigned long nth = 1;; ++nth) {
            const Outcome outcome = removeAndKillAt(nth, marked);
            const std::string bytes = fileOnDisk();
            for (const char name : outcome.gone) {
                const std::string text(1, name);
                EXPECT_NE(bytes.find("[HKEY_LOCAL_MACHINE\\Software\\Probe\\" + text + "]\r\n@=\"Wert " +
                                     text + "\"\r\n\r\n"),
                          std::string::npos)
                    << "killed at call " << nth << ", no record of " << text;
            }
            EXPECT_GE(outcome.gone.size(), gone.size()) << nth;
            gone = outcome.gone;
            if (outcome.status == kEnded) break;
            ASSERT_EQ(outcome.status, kKilled) << nth;
            ++kills;
        }
        EXPECT_EQ(gone, "ABCD");
        // Folder and file, seven header writes, then per row a write, an open, a deletion and a close.
        EXPECT_GE(kills, 2u + 7u + 4u * 4u);
    }

  private:
    fs::path host_;
};

TEST_F(KillTest, AtEveryCallOfARemovalOfAllRows) {
    killAtEveryCall(false);
}

TEST_F(KillTest, AtEveryCallOfARemovalOfMarkedRows) {
    killAtEveryCall(true);
}

TEST_F(KillTest, AtEveryCallWhileTheLogIsWrittenToo) {
    switchTracingOn();
    killAtEveryCall(false);
}

}  // namespace
}  // namespace bromvale::testing
