#pragma once
#include <string_view>

#include "platform/offline/registry/registry.h"

namespace bromvale::offline {

// `name` is in the stored form, `data` as the program gave it.
// Tells the machine's events what a registry function has changed, or is about to delete.
void recordKeyMade(HKEY handle);
void recordKeyDeleted(const RegistryKey& key);
void recordValueSet(const RegistryKey& key, std::string_view name, DWORD type, std::string_view data);
void recordValueDeleted(const RegistryKey& key, std::string_view name);

}  // namespace bromvale::offline
