#pragma once
#include <string_view>

#include "ui/frm_main.h"

namespace bromvale {

// Writes one setting as a text. Its variable stays as it is until the settings are read again.
void storeOption(std::string_view setting, std::string_view text);

// The group "Internetverbindung", from the settings in memory.
void loadProxyOptions(FrmMain& form);

}  // namespace bromvale
