#pragma once
#include <cstdint>

// One call of a scan as it stands in the record file, followed by its text (`length` bytes).
// Keys are numbered in the order of their opening; a hive stands as its own (negative) number.
namespace bench {

enum class Call : std::uint8_t {
    OpenKey,
    OpenKeyEx,
    CloseKey,
    EnumValue,
    EnumKey,
    QueryValue,
    FindFirst,
    FindClose,
    Peek,
};

struct Record {
    Call call;
    std::uint8_t hasData;    // a data buffer was given
    std::uint16_t length;    // of the text behind the record
    std::int32_t key;        // hive, number of an opened key, or 0 for none
    std::uint32_t index;     // of an enumeration; access of an opening
    std::uint32_t nameSize;  // buffer sizes as given
    std::uint32_t dataSize;
};

inline constexpr const char* kRecordFile = "scan_calls.bin";

}  // namespace bench
