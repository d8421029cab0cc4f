// How much of a hive a scan looks at:
//     touched_pages HIVE FOLDER     scans it as HKEY_LOCAL_MACHINE\Software, with FOLDER as drive C, and
//     prints
//                                   the bytes of its pages that were read
// From the scan's set-up on no page of the hive may be read; the first try at each counts it and allows it.
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>

#include "bromvale-offline/options.h"
#include "bromvale-offline/rescue/hive_status.h"
#include "bromvale-offline/rescue/machine_plan.h"
#include "bromvale-offline/rescue/scan_run.h"
#include "bromvale-offline/set_up.h"

namespace bromvale::offline {
namespace {

constexpr std::uintptr_t kPageBytes = 4096;

std::uintptr_t hiveStart = 0;
std::uintptr_t hiveEnd = 0;
// In memory that the scan's process shares with this one.
std::size_t* touched = nullptr;

void allowPage(int, siginfo_t* info, void*) {
    const auto place = reinterpret_cast<std::uintptr_t>(info->si_addr);
    if (place < hiveStart || place >= hiveEnd) ::_exit(1);
    ++*touched;
    auto* const page = reinterpret_cast<void*>(place / kPageBytes * kPageBytes);
    if (::mprotect(page, kPageBytes, PROT_READ) != 0) ::_exit(1);
}

void countPagesOf(std::string_view bytes) {
    struct sigaction action {};
    action.sa_sigaction = allowPage;
    action.sa_flags = SA_SIGINFO;
    ::sigaction(SIGSEGV, &action, nullptr);
    hiveStart = reinterpret_cast<std::uintptr_t>(bytes.data());
    hiveEnd = hiveStart + bytes.size();
    ::mprotect(const_cast<char*>(bytes.data()), bytes.size(), PROT_NONE);
}

int run(char* file, const std::string& folder) {
    void* const shared =
        ::mmap(nullptr, kPageBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) return 1;
    touched = static_cast<std::size_t*>(shared);
    const LoadedHive hive = loadHive(file, {}, false);
    if (!hive.hive) {
        std::fprintf(stderr, "%s: %s\n", file, hive.status.c_str());
        return 1;
    }
    MachinePlan plan;
    plan.isDisk = false;
    plan.mounts.push_back({u"HKEY_LOCAL_MACHINE\\Software", hive.hive, hive.hive->hive().base().root, false});
    ScanRun scan;
    scan.hives = {hive.hive};
    scan.setUp = [&] {
        countPagesOf(hive.hive->image().bytes().all());
        Options options;
        std::string drive = "C:=" + folder;
        std::array<char*, 3> arguments{file, const_cast<char*>("--drive"), drive.data()};
        if (readOptions(static_cast<int>(arguments.size()), arguments.data(), options)) ::_exit(1);
        setUpMachine(options);
        setUpDisk(plan);
        mountAll(plan);
    };
    const ScanResult result = runScan(scan);
    if (!result.failure.empty()) {
        std::fprintf(stderr, "%s\n", result.failure.c_str());
        return 1;
    }
    std::printf("touched=%zu of=%zu rows=%zu\n%s\n", *touched * kPageBytes, hive.hive->image().size(),
                result.rows.size(), result.report.c_str());
    return 0;
}

}  // namespace
}  // namespace bromvale::offline

int main(int count, char** arguments) {
    return count == 3 ? bromvale::offline::run(arguments[1], arguments[2]) : 2;
}
