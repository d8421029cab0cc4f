#include "platform/offline/registry/events.h"

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {
namespace {

// Events are told in Windows-1252.
std::string pathOf(const RegistryKey& key) {
    std::string path(key.name());
    for (const RegistryKey* above = key.owner(); above != nullptr; above = above->owner()) {
        path = std::string(above->name()).append("\\").append(path);
    }
    return ansiFromStored(path);
}

std::string quoted(std::string_view text) {
    std::string result(1, '"');
    result.append(text).push_back('"');
    return result;
}

std::string nameOf(std::string_view name) {
    return name.empty() ? "@" : quoted(ansiFromStored(name));
}

std::string hexOf(std::string_view data) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char c : data) {
        const auto byte = static_cast<unsigned char>(c);
        if (!text.empty()) text += ',';
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

std::string dataOf(DWORD type, std::string_view data) {
    if (type != REG_SZ)
        return std::string("hex(").append(std::to_string(type)).append("):").append(hexOf(data));
    // A text without its NUL is something else than one with it.
    const bool terminated = data.ends_with('\0');
    if (terminated) data.remove_suffix(1);
    return quoted(data).append(terminated ? "" : " without NUL");
}

}  // namespace

void recordKeyMade(HKEY handle) {
    Registry::Opened opened;
    if (machine().registry.resolve(handle, opened) != ERROR_SUCCESS) return;
    machine().events.record({EventKind::KeyMade, pathOf(*opened.key)});
}

void recordKeyDeleted(const RegistryKey& key) {
    machine().events.record({EventKind::KeyDeleted, pathOf(key)});
}

void recordValueSet(const RegistryKey& key, std::string_view name, DWORD type, std::string_view data) {
    machine().events.record(
        {EventKind::ValueSet, pathOf(key), nameOf(name) + "=" + dataOf(type, data), type, 0});
}

void recordValueDeleted(const RegistryKey& key, std::string_view name) {
    machine().events.record({EventKind::ValueDeleted, pathOf(key), nameOf(name)});
}

}  // namespace bromvale::offline
