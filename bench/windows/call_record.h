#pragma once
#include <cstdint>

// One call of the program as it stands in the record file, followed by its text (`length` bytes).
// Keys are numbered in the order of their opening, and so are files and searches in one row of their own; a
// hive stands as its own (negative) number.
namespace bench {

enum class Call : std::uint8_t {
    OpenKey,
    OpenKeyEx,
    OpenKeyWide,
    CloseKey,
    DeleteKey,
    EnumValue,
    EnumValueWide,
    EnumKey,
    EnumKeyWide,
    QueryValue,
    QueryValueWide,
    QueryInfoWide,
    FindFirst,
    FindFirstWide,
    FindNextWide,
    FindClose,
    OpenFile,
    OpenFileWide,
    FinalPath,
    CloseFile,
    WriteFile,
    SetFilePointer,
    GetFileSize,
    RemoveFile,
    RemoveFolder,
    ShellOperation,
    Peek,
};

struct Record {
    Call call;
    std::uint8_t hasData;  // a data buffer was given; of an opened file its share mode
    std::uint32_t length;  // of the text behind the record, bytes; texts of wide functions are UTF-16
    std::int32_t key;      // hive, number of an opened key or file, or 0 for none
    std::uint32_t
        index;  // of an enumeration; access of an opening; the shell's function; method of a pointer
    std::uint32_t
        nameSize;  // buffer sizes as given; disposition of an opened file; the shell's flags; a distance
    std::uint32_t dataSize;  // flags of an opened file
};

inline constexpr const char* kRecordFile = "calls.bin";

}  // namespace bench
