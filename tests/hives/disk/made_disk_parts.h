// The parts of which makeDisk is made; for its sources alone.
#pragma once

#include "tests/hives/disk/made_disk.h"

namespace bromvale::offline {

std::u16string wide(std::string_view utf8);
std::filesystem::path hostPath(std::u16string windowsPath);  // relative

// Nothing for a generation of the other family.
void makeNtDisk(MadeDisk& disk, const DiskPlan& plan);
void make9xDisk(MadeDisk& disk, const DiskPlan& plan);

}  // namespace bromvale::offline
