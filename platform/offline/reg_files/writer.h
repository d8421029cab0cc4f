// Writes the offline registry as a registry file.
#pragma once

#include <optional>
#include <string>

#include "platform/offline/reg_files/reader.h"

namespace bromvale::offline {

// Version 5.00, UTF-16LE with mark, CRLF; all hives, keys in enumeration order, values in theirs. Reading the
// file gives the same registry, byte for byte. An existing file is replaced only when all of it could be
// written. A key whose name holds a line break, or a value whose name holds a NUL, has no form in such a file
// and is an error.
[[nodiscard]] std::optional<RegFileError> saveRegFile(const Registry& registry, const std::string& path);

}  // namespace bromvale::offline
