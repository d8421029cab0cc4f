// Hives for tests, written from a tree: every form that the format knows, whole to the last byte unless the
// test asks for a wrong base block. Also trees made by chance.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/hives/layout.h"

namespace bromvale::offline {

struct MadeValue {
    std::u16string name;
    std::uint32_t type = 1;
    std::string data{};
    std::uint16_t flags = 0;    // besides the one that tells the form of the name
    bool wideName = false;      // UTF-16 even where Latin-1 would do
    bool withoutCell = false;   // length 0 and no offset, as tombstones have it; data is not looked at
    bool alwaysInCell = false;  // even where the data would fit into the value's own field
};

// How a key's sub keys are listed. In parts: a list of lists, each with so many entries at most.
struct MadeList {
    std::string_view kind = key_list::kHashes;  // "lf", "lh" (from 1.5 on) or "li"
    std::size_t partSize = 0;                   // 0: one list without parts
};

struct MadeKey {
    std::u16string name;
    std::vector<MadeValue> values;
    std::vector<MadeKey> subKeys;  // in any order; the file has them sorted
    MadeList list;
    std::u16string className;
    std::uint16_t flags = 0;   // besides those of the root and of the form of the name
    std::uint8_t layered = 0;  // the byte at 13
    std::uint64_t lastWritten = 0x01D9000000000000u;
    std::size_t security = 0;  // index in MadeHive::securities
    bool wideName = false;
    std::uint32_t handle = 0;  // for a predefined handle: what stands in place of the number of values
};

struct MadeHive {
    MadeKey root;
    std::uint32_t minorVersion = 5;
    std::vector<std::string> securities{std::string("\1\0\0\x80", 4) + std::string(16, '\0')};  // descriptors
    std::size_t binSize = 4096;     // at least, a multiple of 4,096
    std::size_t freeCellEvery = 0;  // so many cells; 0: free cells at the bins' ends alone
    std::string tail;               // behind the bins
    std::uint32_t firstSequence = 1;
    std::uint32_t secondSequence = 1;
    std::uint32_t flags = 0;  // of the base block
    std::uint32_t clusteringFactor = 1;
    std::uint64_t lastWritten = 0x01D9000000000000u;  // of the file
    bool checksumRight = true;
};

// The file's bytes. Security that no key uses isn't written.
std::string bytesOf(const MadeHive& hive);

// The key of that path below the root of a file's bytes, "" for the root; kNil where there is none.
Cell cellOf(std::string_view bytes, std::u16string_view path);

// All kinds mixed, some dozens of keys; the same seed gives the same hive. The file is clean. Every eighth
// seed adds what Windows' own hives have seldom: predefined handles, symbolic links, keys that must not be
// deleted, names with a NUL or half a surrogate pair, tombstones, data without a cell.
MadeHive randomHive(std::uint32_t seed);
// The same without these.
MadeHive randomPlainHive(std::uint32_t seed);

}  // namespace bromvale::offline
