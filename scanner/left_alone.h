#pragma once
#include <string>
#include <string_view>

#include "scanner/entry_group.h"

namespace bromvale {

// What is left alone since its texts can't be told in the code page (platform/exact/text.h).

// Takes the rows of the object out of lvwRegKeys that its dead links got before the key was met that leaves
// it alone.
void takeBackRows(EntryGroup& group);

// Names the object in the log while tracing is on.
void traceLeftAlone(const EntryGroup& group, std::string_view hiveName);

// What the log says of an entry whose data decides nothing.
[[nodiscard]] std::string leftAloneText(std::string_view hiveName, std::string_view key,
                                        std::string_view name, std::string_view value);

}  // namespace bromvale
