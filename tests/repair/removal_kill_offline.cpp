// The process is ended at every platform call of a removal in turn, and the disk is full at every write.
// Whatever the moment: a key that is gone has its record in the undo file and is whole in the complete copy.
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
using namespace std::string_literals;

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
        for (const std::string& name : kNames) {
            addKey(name);
            setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe\\" + name, "Zahl", REG_DWORD, "\7\0\0\0"s);
            setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe\\" + name, "Bytes", REG_BINARY, "\1\2"s);
        }
    }
    ~KillTest() override { fs::remove_all(host_); }

    struct Outcome {
        int status = -1;
        std::string gone;  // names of the keys that were deleted at the end
    };

    // Runs the removal in a process of its own that ends at the nth platform call, or in which the disk is
    // full from the nth write on. The registry lives in that process, so it tells what is gone in its last
    // moment; the files are on the disk.
    Outcome removeAndKillAt(unsigned long nth, bool marked, bool fullDisk = false) {
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
            if (fullDisk) {
                offline::faults().failFrom("WriteFile", static_cast<unsigned>(nth), 112);
            } else {
                offline::faults().observe([&](std::string_view) {
                    if (++calls == nth) tell(kKilled);
                });
            }
            if (marked) {
                removeMarked();
            } else {
                form().scan.ProblemeEntfernen();
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

    // Of the files whose names begin with this letter.
    std::string onDisk(char first) const {
        std::string bytes;
        const fs::path backup = host_ / "Programme/Bromvale/Backup";
        if (!fs::exists(backup)) return bytes;
        for (const auto& entry : fs::directory_iterator(backup)) {
            if (entry.path().filename().string().front() != first) continue;
            std::ifstream in(entry.path(), std::ios::binary);
            bytes.append(std::istreambuf_iterator<char>(in), {});
        }
        return bytes;
    }
    static std::string copyOf(const std::string& name) {
        const std::string record = "\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\" + name + "]\r\n@=\"Wert " +
                                   name + "\"\r\n\"Zahl\"=dword:00000007\r\n\"Bytes\"=hex:01,02\r\n";
        std::string wide;
        for (const char c : record) wide += {c, '\0'};
        return wide;
    }
    void hasBothRecords(const std::string& gone, unsigned long nth) const {
        const std::string undo = onDisk('R');
        const std::string copy = onDisk('V');
        for (const char letter : gone) {
            const std::string name(1, letter);
            EXPECT_NE(undo.find("[HKEY_LOCAL_MACHINE\\Software\\Probe\\" + name + "]\r\n@=\"Wert " + name +
                                "\"\r\n\r\n"),
                      std::string::npos)
                << "at call " << nth << ", no record of " << name;
            EXPECT_NE(copy.find(copyOf(name)), std::string::npos)
                << "at call " << nth << ", no whole copy of " << name;
        }
    }

    void killAtEveryCall(bool marked) {
        if (marked) {
            for (int row = 1; row <= list().count(); ++row) list().item(row).setSelected(true);
        }
        std::string gone;
        unsigned long kills = 0;
        for (unsigned long nth = 1;; ++nth) {
            const Outcome outcome = removeAndKillAt(nth, marked);
            hasBothRecords(outcome.gone, nth);
            EXPECT_GE(outcome.gone.size(), gone.size()) << nth;
            gone = outcome.gone;
            if (outcome.status == kEnded) break;
            ASSERT_EQ(outcome.status, kKilled) << nth;
            ++kills;
        }
        EXPECT_EQ(gone, "ABCD");
        // Folder and file, seven header writes and the copy's file, then per row a write, an open, the
        // reading of five calls at least, a close and a write, an open, a deletion and a close.
        EXPECT_GE(kills, 2u + 7u + 1u + 4u * 12u);
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

// The new folder in the log, 7 writes of the head, then two a row.
TEST_F(KillTest, OnAFullDiskAtEveryWriteNothingGoesWithoutBothRecords) {
    std::string gone;
    for (unsigned long nth = 1; nth <= 1 + 7 + 4 * 2 + 1; ++nth) {
        const Outcome outcome = removeAndKillAt(nth, false, true);
        EXPECT_EQ(outcome.status, kEnded) << nth;
        hasBothRecords(outcome.gone, nth);
        gone = outcome.gone;
        EXPECT_EQ(gone.size(), nth < 11 ? 0u : (nth - 9) / 2) << nth;
    }
    EXPECT_EQ(gone, "ABCD");
}

TEST_F(KillTest, AtEveryCallWhileTheLogIsWrittenToo) {
    switchTracingOn();
    killAtEveryCall(false);
}

}  // namespace
}  // namespace bromvale::testing
