// The removal of rows that a scan of a registry found, on the offline machine, whose drive C is a folder:
//     removal_timed FILE.reg FOLDER ROWS         all of the first ROWS rows; "marked" behind it: as marked
//     ones removal_timed FILE.reg FOLDER ROWS bare    the same writes and deletions alone, of the files that
//     a removal left in FOLDER removal_timed FILE.reg FOLDER ROWS same    these with the reading of each key
//     before it goes removal_timed FILE.reg FOLDER ROWS rows    prints the rows: key line, name, value and
//     hive, with tabs between them
// Prints milliseconds of the processor, rows, and the most kilobytes of memory before and after the work.
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bromvale-offline/options.h"
#include "bromvale-offline/set_up.h"
#include "core/registry_layer.h"
#include "core/startup/main.h"
#include "core/state.h"
#include "core/text_file.h"
#include "platform/exact/registry.h"
#include "platform/exact/whole_key.h"
#include "platform/files.h"
#include "platform/offline/machine.h"
#include "platform/registry.h"
#include "ui/frm_main.h"

namespace bromvale::offline {
namespace {

long mostKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// Of the processor: what other programs do on the machine doesn't count.
double milliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// A first big request has the allocator put together all that was freed before it, as by the scan of a whole
// registry: that is no part of the work that is timed.
void tidyMemory() {
    constexpr std::size_t kBig = 1 << 16;
    void* volatile const big = std::malloc(kBig);
    std::free(big);
}

template <class Work>
void timed(int rows, Work work) {
    tidyMemory();
    const long before = mostKilobytes();
    const double start = milliseconds();
    work();
    std::printf("ms=%.1f rows=%d before=%ld most=%ld\n", milliseconds() - start, rows, before,
                mostKilobytes());
}

void keepFirst(ListView& list, int rows) {
    for (int last = list.count(); last > rows; --last) list.remove(last);
}

void remove(int rows, bool marked) {
    ScanPage& page = frmMain().scan;
    keepFirst(page.lvwRegKeys, rows);
    const int count = page.lvwRegKeys.count();
    for (int row = 1; row <= count; ++row) page.lvwRegKeys.item(row).setSelected(marked);
    page.chbMarkierteKeysEntfernen.setValue(marked ? 1 : 0);
    timed(count, [&] { page.ProblemeEntfernen(); });
}

// What Wine's tools would read otherwise is left out.
void print(int rows) {
    const auto isOdd = [](char c) {
        return static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) > '~';
    };
    const ListView& list = frmMain().scan.lvwRegKeys;
    for (int row = 1; row <= list.count() && rows > 0; ++row) {
        std::string line;
        bool odd = false;
        for (int column = 0; column < 4; ++column) {
            const std::string& text = list.item(row).column(column);
            odd = odd || std::any_of(text.begin(), text.end(), isOdd);
            line += (column != 0 ? "\t" : "") + text;
        }
        if (odd) continue;
        std::puts(line.c_str());
        --rows;
    }
}

// The records of a file, with the blank line behind each, and what stands before the first.
std::vector<std::string> recordsOf(const std::string& bytes, const std::string& start) {
    std::vector<std::string> records;
    std::size_t from = 0;
    for (std::size_t at = bytes.find(start); at != std::string::npos;
         at = bytes.find(start, from + start.size())) {
        records.push_back(bytes.substr(from, at - from));
        from = at;
    }
    records.push_back(bytes.substr(from));
    return records;
}

std::string fileIn(const std::string& folder, const char* start) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.path().filename().string().starts_with(start)) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    return {};
}

struct BareKey {
    HKEY root;
    std::string subKey;

    explicit BareKey(std::string_view keyLine)
        : root(keyLine.starts_with("[HKEY_CURRENT_USER") ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE) {
        const std::size_t slash = keyLine.find('\\');
        subKey = keyLine.substr(slash + 1, keyLine.find(']') - slash - 1);
    }
};

void readBarely(const BareKey& bare) {
    HKEY key = nullptr;
    if (openExactKey(bare.root, bare.subKey.c_str(), KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS, key) !=
        ERROR_SUCCESS)
        return;
    WholeKey<char16_t> whole;
    static_cast<void>(readWholeKey(key, whole));
    static_cast<void>(RegCloseKey(key));
}

void deleteBarely(const BareKey& bare) {
    HKEY key = nullptr;
    static_cast<void>(RegOpenKeyExA(bare.root, bare.subKey.c_str(), 0, READ_CONTROL, &key));
    static_cast<void>(RegDeleteKeyA(key, ""));
    static_cast<void>(RegCloseKey(key));
}

// The system's own calls, a file handle each.
void makeBareCalls(const std::string& folder, bool reading) {
    using namespace std::string_literals;
    const std::vector<std::string> undo = recordsOf(fileIn(folder, "R"), "[HKEY_");
    const std::vector<std::string> copies = recordsOf(fileIn(folder, "Vollst"), "[\0H\0K\0E\0Y\0_\0"s);
    const auto create = [](const std::string& path) {
        return CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    std::vector<BareKey> keys(undo.begin() + 1, undo.end());
    timed(static_cast<int>(keys.size()), [&] {
        const HANDLE undoFile = create(BackupPath + "bare_undo.reg");
        const HANDLE copyFile = create(BackupPath + "bare_copy.reg");
        DWORD written = 0;
        for (std::size_t i = 0; i < std::max(undo.size(), copies.size()); ++i) {
            if (i < undo.size())
                WriteFile(undoFile, undo[i].data(), static_cast<DWORD>(undo[i].size()), &written, nullptr);
            if (reading && i < keys.size()) readBarely(keys[i]);
            if (i < copies.size())
                WriteFile(copyFile, copies[i].data(), static_cast<DWORD>(copies[i].size()), &written,
                          nullptr);
            if (i < keys.size()) deleteBarely(keys[i]);
        }
        CloseHandle(undoFile);
        CloseHandle(copyFile);
    });
}

int run(char** words, const std::string& what) {
    Options options;
    std::string drive = "C:=" + std::string(words[2]);
    char* arguments[] = {words[0], const_cast<char*>("--registry"), words[1], const_cast<char*>("--drive"),
                         drive.data()};
    if (readOptions(5, arguments, options)) return 2;
    setUpMachine(options);
    if (!loadRegistries(options)) return 2;
    const int rows = std::atoi(words[3]);
    bool done = false;
    machine().pump.nextAction = [&] {
        if (done) return false;
        done = true;
        if (what == "bare" || what == "same") {
            makeBareCalls(words[2], what == "same");
        } else {
            frmMain().scan.cmdStart_Click();
            what == "rows" ? print(rows) : remove(rows, what == "marked");
        }
        std::fflush(stdout);
        std::_Exit(0);
        return true;
    };
    runProgram();
    return 1;
}

}  // namespace
}  // namespace bromvale::offline

int main(int count, char** words) {
    return count >= 4 ? bromvale::offline::run(words, count > 4 ? words[4] : "") : 2;
}
