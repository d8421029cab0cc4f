#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/registry.h"

namespace bromvale {

// All registry calls that aren't scans. Hives are their handle's signed 32-bit number, as lists and log lines
// show it.
inline constexpr std::int32_t kHiveCurrentUser = -2147483647;
inline constexpr std::int32_t kHiveLocalMachine = -2147483646;

[[nodiscard]] HKEY hiveHandle(std::int32_t number);
// The low 32 bits, signed.
[[nodiscard]] std::int32_t handleNumber(HKEY handle);

// The key's handle (closed again) as a number, 0 if it couldn't be opened.
std::int32_t KeyExist(std::int32_t hive, std::string_view subKey, REGSAM access);
// Deletes the key; a missing or refusing one is passed over. READ_CONTROL is enough, since the deletion opens
// the key anew by itself.
void DelKey(std::int32_t hive, std::string_view subKey, REGSAM access);
// What is left of DelKey where its caller has found no key just before: one that has come into being since
// then stays.
void DelMissingKey(std::int32_t hive, std::string_view subKey);
void DelKeyValue(std::int32_t hive, std::string_view subKey, std::string_view name);
// The key must exist; a failed open goes unnoticed. Types other than 1 store a byte in a 32-bit word: Failure
// 6 above 255, Failure 13 for no number.
void SetKeyValue(std::int32_t hive, std::string_view subKey, std::string_view name, std::string_view value,
                 std::uint32_t type, REGSAM access);
// Text for REG_SZ, a 16-bit number for REG_BINARY, monostate otherwise.
using RegistryValue = std::variant<std::monostate, std::string, std::int16_t>;
[[nodiscard]] RegistryValue ReadValue(std::int32_t hive, std::string_view subKey, std::string_view name);
// Empty if key or value is missing; the name's case counts. Leaves the key open, deliberately: it is called
// once each per use, and closing it is not this routine's work.
[[nodiscard]] std::string FindValue(std::int32_t hive, std::string_view subKey, std::string_view name);
[[nodiscard]] std::string_view HiveName(std::int32_t hive);
// Cuts the text at its first NUL, in place, and returns it.
std::string TrimNull(std::string& text);

}  // namespace bromvale
