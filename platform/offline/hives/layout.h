// Where things stand in the files of the registry: a table a structure, in bytes from its start. Numbers are
// little-endian; a cell's structure begins behind its size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace bromvale::offline {

// An offset of a cell, counted from the end of the base block.
using Cell = std::uint32_t;
inline constexpr Cell kNil = 0xFFFFFFFFu;

inline constexpr std::size_t kSectorSize = 512;
inline constexpr std::size_t kPageSize = 4096;
inline constexpr std::size_t kBinsStart = kPageSize;  // behind the base block

// The first 512 bytes of a hive and of its logs; the rest of the page says nothing.
namespace base_block {
inline constexpr std::string_view kSignature = "regf";
inline constexpr std::size_t kFirstSequence = 4;   // raised when writing begins
inline constexpr std::size_t kSecondSequence = 8;  // raised when it has ended
inline constexpr std::size_t kLastWritten = 12;    // FILETIME
inline constexpr std::size_t kMajorVersion = 20;
inline constexpr std::size_t kMinorVersion = 24;
inline constexpr std::size_t kType = 28;
inline constexpr std::size_t kFormat = 32;
inline constexpr std::size_t kRoot = 36;
inline constexpr std::size_t kBinsSize = 40;
inline constexpr std::size_t kClusteringFactor = 44;  // sector size / 512
inline constexpr std::size_t kFileName = 48;          // 64 bytes
inline constexpr std::size_t kFlags = 144;
inline constexpr std::size_t kChecksum = 508;

inline constexpr std::uint32_t kTypeHive = 0;
inline constexpr std::uint32_t kTypeOldLog = 1;
inline constexpr std::uint32_t kTypeOlderLog = 2;  // of Windows 2000 and before
inline constexpr std::uint32_t kTypeNewLog = 6;
inline constexpr std::uint32_t kFlagTransactions = 1;
inline constexpr std::uint32_t kFlagLayered = 2;
}  // namespace base_block

namespace bin {
inline constexpr std::string_view kSignature = "hbin";
inline constexpr std::size_t kOffset = 4;
inline constexpr std::size_t kSize = 8;
inline constexpr std::size_t kLastWritten = 20;  // in the first bin alone
inline constexpr std::size_t kHeaderSize = 32;
}  // namespace bin

inline constexpr std::size_t kCellHeaderSize = 4;

namespace key_node {
inline constexpr std::string_view kSignature = "nk";
inline constexpr std::size_t kFlags = 2;
inline constexpr std::size_t kLastWritten = 4;  // FILETIME
inline constexpr std::size_t kAccess = 12;      // 4 bytes, of which the second is for layered keys
inline constexpr std::size_t kParent = 16;
inline constexpr std::size_t kSubKeyCount = 20;
inline constexpr std::size_t kSubKeys = 28;
inline constexpr std::size_t kValueCount = 36;
inline constexpr std::size_t kValues = 40;
inline constexpr std::size_t kSecurity = 44;
inline constexpr std::size_t kClassName = 48;
inline constexpr std::size_t kLongestSubKeyName = 52;  // bytes, 16 bits
inline constexpr std::size_t kLongestValueName = 60;   // bytes
inline constexpr std::size_t kLongestData = 64;        // bytes
inline constexpr std::size_t kNameSize = 72;           // bytes
inline constexpr std::size_t kClassNameSize = 74;      // bytes
inline constexpr std::size_t kName = 76;

inline constexpr std::uint16_t kFlagRoot = 0x04;
inline constexpr std::uint16_t kFlagUndeletable = 0x08;
inline constexpr std::uint16_t kFlagSymbolicLink = 0x10;
inline constexpr std::uint16_t kFlagOneByteName = 0x20;  // Latin-1, not Windows-1252
inline constexpr std::uint16_t kFlagPredefined = 0x40;   // the number of values is a handle
}  // namespace key_node

// Signature, number, then entries: "lf" and "lh" with four bytes of name or hash behind each offset, "li" and
// "ri" with offsets alone.
namespace key_list {
inline constexpr std::string_view kNames = "lf";
inline constexpr std::string_view kHashes = "lh";
inline constexpr std::string_view kOffsets = "li";
inline constexpr std::string_view kLists = "ri";
inline constexpr std::size_t kCount = 2;
inline constexpr std::size_t kEntries = 4;
}  // namespace key_list

namespace value_node {
inline constexpr std::string_view kSignature = "vk";
inline constexpr std::size_t kNameSize = 2;  // bytes
inline constexpr std::size_t kDataSize = 4;  // bytes; the top bit: they stand in the next field
inline constexpr std::size_t kData = 8;
inline constexpr std::size_t kType = 12;
inline constexpr std::size_t kFlags = 16;
inline constexpr std::size_t kName = 20;

inline constexpr std::uint32_t kDataInside = 0x80000000u;
inline constexpr std::uint16_t kFlagOneByteName = 1;
inline constexpr std::uint16_t kFlagTombstone = 2;
}  // namespace value_node

// Data longer than a piece, from version 1.4 on.
namespace big_data {
inline constexpr std::string_view kSignature = "db";
inline constexpr std::size_t kCount = 2;
inline constexpr std::size_t kPieces = 4;
inline constexpr std::size_t kPieceSize = 16344;
inline constexpr std::uint32_t kFromMinorVersion = 4;
}  // namespace big_data

namespace security_node {
inline constexpr std::string_view kSignature = "sk";
inline constexpr std::size_t kNext = 4;
inline constexpr std::size_t kPrevious = 8;
inline constexpr std::size_t kUseCount = 12;
inline constexpr std::size_t kDescriptorSize = 16;
inline constexpr std::size_t kDescriptor = 20;
}  // namespace security_node

// The log as it was up to Windows 8: a bitmap of sectors, then the sectors.
namespace old_log {
inline constexpr std::string_view kSignature = "DIRT";
}

// An entry of the log since Windows 8.1.
namespace log_entry {
inline constexpr std::string_view kSignature = "HvLE";
inline constexpr std::size_t kSize = 4;
inline constexpr std::size_t kFlags = 8;
inline constexpr std::size_t kSequence = 12;
inline constexpr std::size_t kBinsSize = 16;
inline constexpr std::size_t kPageCount = 20;
inline constexpr std::size_t kHash1 = 24;
inline constexpr std::size_t kHash2 = 32;
inline constexpr std::size_t kPages = 40;  // pairs of offset and size, then the pages' bytes
}  // namespace log_entry

}  // namespace bromvale::offline
