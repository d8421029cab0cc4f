#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/registry.h"

namespace bromvale {

bool seesAnotherHalf() {
    return offline::machine().otherHalf.seen == offline::Halves::SeenBy32;
}

// The machine's registry has one tree, and its names are the true ones.
std::optional<std::u16string> realKeyPath(HKEY handle) {
    offline::Registry::Opened opened;
    if (offline::machine().registry.resolve(handle, opened) != ERROR_SUCCESS) return std::nullopt;
    std::string path(opened.key->name());
    for (const offline::RegistryKey* above = opened.key->owner(); above != nullptr; above = above->owner())
        path = std::string(above->name()).append("\\").append(path);
    return offline::wideFromStored(path);
}

}  // namespace bromvale
