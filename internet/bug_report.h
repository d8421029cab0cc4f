#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// What a report tells, in the order in which the address names it.
struct ReportFields {
    std::string version;
    std::string errorNumber;
    std::string errorText;
    std::string where;
    std::string system;
    std::string servicePack;
    std::string description;
    std::string eMail;
};

// Sends the report in the query of one GET and tells the user how that went; without an answer the user may
// have it sent again. Never fails.
void BugReport(const ReportFields& fields);

// The address that sends the report. Blanks of the fields become %20, everything else stays as it is.
[[nodiscard]] std::string reportAddress(const ReportFields& fields);

// The "@" and the first "." stand late enough. The "." need not stand behind the "@", and an address with
// fewer than four characters before its first point is refused: the makers of the form want it that strict.
[[nodiscard]] bool isAcceptedAddress(std::string_view eMail);

}  // namespace bromvale
