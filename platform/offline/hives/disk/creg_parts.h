// How a registry of Windows 95 to ME gets from the library into the program.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "platform/offline/hives/disk/creg.h"

namespace bromvale::offline {

// What is in the file, or why it can't be read (English).
using CregAnswer = std::variant<CregTree, std::string>;

constexpr std::size_t kKeyNameSize = 28;  // bytes of a key in the file's list of keys

// creg_library.cpp: may never return, may end the process.
[[nodiscard]] CregAnswer readByLibrary(const std::string& path, std::size_t fileSize, UINT codePage);

// creg_answer.cpp: an answer as bytes, and back; HiveDamage where they are cut.
[[nodiscard]] std::string bytesOf(const CregAnswer& answer);
[[nodiscard]] CregAnswer answerIn(std::string_view bytes);

}  // namespace bromvale::offline
