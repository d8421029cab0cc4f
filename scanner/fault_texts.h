#pragma once
#include <string>
#include <string_view>

#include "core/result_row.h"
#include "scanner/entry.h"

namespace bromvale {

// How found and untouched entries are spelled, in rows and in the log.

enum class Data { AsItIs, BackslashesDoubled };

// The row of an entry whose file is missing, whose key is empty, or of a stale Uninstall key: names but "@"
// stand in quotes.
[[nodiscard]] ResultRow objectRow(const Entry& entry, Data form);

// The row of an entry with a dead link, or beside one: names stand without quotes, data as it is.
// `behindHiveName` is what parts hive and key.
[[nodiscard]] ResultRow linkRow(const Entry& entry, std::string_view behindHiveName);

// "HKEY_LOCAL_MACHINE\key];name=value".
[[nodiscard]] std::string entryText(const Entry& entry);

// What stands behind an entry or a key in the log that is left alone, since its texts can't be told in the
// code page (platform/exact/text.h).
inline constexpr std::string_view kLeftAlone =
    "; bleibt unberührt, da nicht alle Zeichen dargestellt werden können";

}  // namespace bromvale
