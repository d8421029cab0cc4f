#include <algorithm>
#include <array>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/hives/hive_values.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

using Kind = DriveLetter::Kind;

constexpr std::u16string_view kPrefix = u"\\DosDevices\\";
constexpr std::string_view kGpt = "DMIO:ID:";
constexpr std::size_t kMbrSize = 12;
constexpr std::size_t kGptSize = 24;
constexpr std::size_t kLongest = 4096;

// In the order in which they are asked: a stick may hold a CD.
constexpr std::array<std::pair<std::string_view, Kind>, 5> kDevices{
    {{"CDROM", Kind::Cd},
     {"FDC#", Kind::Floppy},
     {"FLOPPY", Kind::Floppy},
     {"USBSTOR", Kind::UsbStick},
     {"REMOVABLEMEDIA", Kind::OtherRemovable}}};

// The first three fields are little-endian numbers.
std::string guidText(std::string_view bytes) {
    constexpr std::array<int, 20> kOrder{3,  2, 1, 0,  -1, 5,  4,  -1, 7,  6,
                                         -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const int at : kOrder) {
        if (at < 0) {
            text += '-';
            continue;
        }
        const auto byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(at)]);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

DriveLetter driveLetter(char letter, std::string_view data) {
    DriveLetter drive;
    drive.letter = letter;
    if (data.size() == kMbrSize) {
        drive.kind = Kind::Partition;
        drive.diskSignature = HiveBytes(data).u32(0);
        drive.partitionStart = HiveBytes(data).u64(4);
    } else if (data.size() == kGptSize && data.starts_with(kGpt)) {
        drive.kind = Kind::GptPartition;
        drive.partitionGuid = guidText(data.substr(kGpt.size()));
    } else {
        drive.device = textOfBytes(data);
        const std::string upper = upperStored(storedFromWide(drive.device));
        const auto device = std::ranges::find_if(
            kDevices, [&](const auto& known) { return upper.find(known.first) != std::string::npos; });
        if (device != kDevices.end()) drive.kind = device->second;
    }
    return drive;
}

}  // namespace

std::vector<DriveLetter> driveLetters(const Hive& system) {
    std::vector<DriveLetter> letters;
    const Cell mounted = system.find(system.root(), u"MountedDevices");
    if (mounted == kNil) return letters;
    for (const Cell cell : system.values(system.key(mounted))) {
        const HiveValue value = system.value(cell);
        const std::u16string name = value.name();
        if (name.size() != kPrefix.size() + 2 || value.size > kLongest ||
            !sameName(std::u16string_view(name).substr(0, kPrefix.size()), kPrefix))
            continue;
        const std::u16string_view drive = std::u16string_view(name).substr(kPrefix.size());
        if (isWindowsPath(drive))
            letters.push_back(driveLetter(static_cast<char>(upperLetter(drive[0])), system.data(value)));
    }
    std::ranges::stable_sort(letters, {}, &DriveLetter::letter);
    return letters;
}

}  // namespace bromvale::offline
