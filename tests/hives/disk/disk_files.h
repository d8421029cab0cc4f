// The ground of tests that look at whole disks.
#pragma once

#include <sys/stat.h>

#include <map>

#include "platform/offline/hives/disk/disk.h"
#include "tests/hives/disk/made_disk.h"
#include "tests/hives/hive_files.h"

namespace bromvale::offline {

class DiskTest : public HiveFilesTest {
  protected:
    using HiveFilesTest::HiveFilesTest;
    MadeDisk make(Generation generation) const {
        DiskPlan plan;
        plan.generation = generation;
        return makeDisk(folder() / "disk", plan);
    }
    static WindowsDisk found(const std::filesystem::path& path) {
        auto result = findWindows(path.string());
        if (const auto* problem = std::get_if<DiskProblem>(&result)) ADD_FAILURE() << problem->text();
        return std::holds_alternative<WindowsDisk>(result) ? std::get<WindowsDisk>(std::move(result))
                                                           : WindowsDisk();
    }
    static DiskProblem problem(const std::filesystem::path& path) {
        auto result = findWindows(path.string());
        EXPECT_TRUE(std::holds_alternative<DiskProblem>(result));
        return std::holds_alternative<DiskProblem>(result) ? std::get<DiskProblem>(result) : DiskProblem();
    }
    // Names, kinds, sizes and times of all that lies below, but when it was looked at.
    static std::map<std::string, std::string> state(const std::filesystem::path& root) {
        std::map<std::string, std::string> all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
            struct stat status {};
            ::lstat(entry.path().c_str(), &status);
            all[entry.path().string()] =
                std::to_string(status.st_mode) + " " + std::to_string(status.st_size) + " " +
                std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec) + " " +
                std::to_string(status.st_ctim.tv_sec) + "." + std::to_string(status.st_ctim.tv_nsec);
        }
        return all;
    }
};

}  // namespace bromvale::offline
