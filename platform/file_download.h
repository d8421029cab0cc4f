#pragma once
#include <string>

namespace bromvale {

// What stands for the system's download dialog where there is none: the user says where the file goes, or
// that it doesn't. Events are served while it comes in. A file that could not be fetched whole is deleted,
// and the user is told.
void fetchWithConsent(const std::string& address);

// Provider: the dialog "save as". Empty where the user has cancelled it.
[[nodiscard]] std::string askWhereToSave(const std::string& suggestedName);

}  // namespace bromvale
