// bromvale-offline from outside, on made disks of Windows.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/hives/disk/made_disk.h"
#include "tests/offline/tool_run.h"

namespace bromvale::testing {

// A class below CLSID whose library is at `path`.
void addClass(offline::MadeKey& clsid, std::u16string_view guid, std::u16string_view path);

// A program's path below App Paths.
void addProgram(offline::MadeHive& software, const std::u16string& name, std::u16string_view path);

class RescueTest : public ToolTest {
  protected:
    // What the disk's classes point to: of each generation the same. The first object and the last one of a
    // place are there, since the first is judged with the place before and the last never.
    offline::MadeDisk makeDisk(offline::Generation generation);

    // With what the function adds to its SOFTWARE, and C:\bootmgr.
    offline::MadeDisk makeDiskWith(const std::function<void(offline::MadeHive& software)>& software,
                                   offline::Generation generation = offline::Generation::SevenX64);

    // With "--windows" and the disk's root in front.
    Outcome onDisk(std::vector<std::string> arguments);
    [[nodiscard]] std::filesystem::path disk() const { return folder() / "disk"; }
    // With a terminal for input and errors, at which `answer` is typed; `err` is what it shows.
    Outcome runAtTerminal(std::vector<std::string> arguments, const std::string& answer);
    Outcome onDiskAtTerminal(std::vector<std::string> arguments, const std::string& answer);
    // Each line as the tool says it to people.
    static std::string said(const std::vector<std::string>& lines);

    // Of what it says: what stands behind the lines that tell which hives are read, where all are clean.
    static std::string behindHives(const std::string& err);

    // Names, sizes, times of the last write and bytes of all that is there.
    [[nodiscard]] std::string everythingOnDisk() const;
    // A line a row of the report, "number kind key -> file [user] [view]", from its JSON.
    std::vector<std::string> rowsOf(std::vector<std::string> arguments);

  private:
    offline::MadeDisk disk_;
};

}  // namespace bromvale::testing
