#include "platform/offline/hives/log_names.h"

#include <algorithm>

namespace bromvale::offline {
namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool sameHostName(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lower, lower);
}

std::optional<LogName> logNameOf(std::string_view fileName) {
    for (const auto& [name, end] : kLogEnds) {
        if (fileName.size() >= end.size() && sameHostName(fileName.substr(fileName.size() - end.size()), end))
            return name;
    }
    return std::nullopt;
}

std::optional<LogName> logOfHive(std::string_view fileName, std::string_view hive) {
    const std::optional<LogName> name = logNameOf(fileName);
    if (!name || !sameHostName(fileName.substr(0, fileName.rfind('.')), hive)) return std::nullopt;
    return name;
}

}  // namespace bromvale::offline
