#include "uninstall/program_entry.h"

#include "base/text_parts.h"

namespace bromvale {

ProgramEntry takeApart(std::string_view line) {
    const auto open = positionOf(line, '[');
    const auto close = positionOf(line, ']');
    const auto equals = positionOf(line, '=');
    return {leftPart(line, open - 1), midPart(line, open + 1, close - open),
            midPart(line, close + 1, equals - close - 1),
            midPart(line, equals + 1, static_cast<std::int64_t>(line.size()))};
}

}  // namespace bromvale
