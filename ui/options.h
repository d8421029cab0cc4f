#pragma once
#include <string_view>

#include "ui/options_page.h"

namespace bromvale {

// Writes one setting as a text. Its variable stays as it is until the settings are read again.
void storeOption(std::string_view setting, std::string_view text);

// The group "Internetverbindung", from the settings in memory.
void loadProxyOptions(OptionsPage& page);

}  // namespace bromvale
