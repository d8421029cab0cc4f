// Registry files and the offline registry: reading, writing, and entering as the registry editor does.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/offline/registry/registry.h"

namespace bromvale::offline {

struct RegFileError {
    std::string file;
    std::size_t line = 0;  // from 1; 0 when no line is to blame
    std::string reason;    // Windows-1252, to be shown: it may quote the file
};

// REGEDIT4 and version 5.00, UTF-16LE with mark or ANSI (the machine's code page), everything that the
// registry editor exports; names and texts keep every character. A file is checked as a whole before the
// first key is touched: after an error the registry is as it was. A last line without line break is read when
// it is visibly whole (a text, a dword of eight digits, a "-"); for a key or a row of bytes it is an error,
// since the file may have been cut there.
[[nodiscard]] std::optional<RegFileError> loadRegFile(const std::string& path, Registry& registry);
// The same for a file in memory; `name` is what an error calls it.
[[nodiscard]] std::optional<RegFileError> loadRegText(std::string_view bytes, const std::string& name,
                                                      Registry& registry);

// Version 5.00, UTF-16LE with mark, CRLF; all hives, keys in enumeration order, values in theirs. Reading the
// file gives the same registry, byte for byte. An existing file is replaced only when all of it could be
// written. A key whose name holds a line break, or a value whose name holds a NUL, has no form in such a file
// and is an error.
[[nodiscard]] std::optional<RegFileError> saveRegFile(const Registry& registry, const std::string& path);

// The same of single keys with all below them (whole paths; one that isn't there is passed over), or of all
// hives without any; keys and values whose names have no form in such a file are left out and counted. The
// whole text stands in memory.
[[nodiscard]] std::string regFileOf(const Registry& registry, std::span<const std::u16string> keys,
                                    std::size_t& leftOut);

// What the registry editor does with a registry file that it is told to enter: it takes what it understands
// and passes over the rest, a line at a time. A key line that names no hive takes its values along; a
// backslash in a text that begins no known escape is dropped. Without a header nothing is entered.
void mergeRegText(std::string_view bytes, Registry& registry);

}  // namespace bromvale::offline
