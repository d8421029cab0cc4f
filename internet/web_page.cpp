#include "internet/web_page.h"

#include "base/text.h"
#include "core/state.h"
#include "platform/internet.h"

namespace bromvale {

std::string webServices() {
    return "http://" + WebHost;
}

// Nobody looks at the results: what did not come in stays blank, and blanks do not count.
std::string readPage(const std::string& address) {
    constexpr std::size_t kReadCount = 3000;
    std::string buffer(kReadCount, ' ');
    {
        WebAnswer page(address, AppTitle);
        std::size_t notUsed = 0;
        page.read(buffer.data(), buffer.size(), notUsed);
    }
    return Replace(buffer, " ", "");
}

bool asksToTryAgain(const Routine<>& routine, int failure, std::string_view what, std::string_view question) {
    constexpr const char* kProblem = "Es besteht ein Problem mit Ihrer Internetverbindung.";
    routine.step([&] { throw Failure{failure, kProblem}; });
    bool again = false;
    routine.step([&] {
        again = asksYes(std::string(kProblem)
                            .append("\r\n\r\n")
                            .append(what)
                            .append("Stellen Sie sicher, das eine Internetverbindung besteht.\r\n\r\n")
                            .append(question),
                        kStyleExclamation);
    });
    if (again) routine.trace("wiederholt");
    return again;
}

}  // namespace bromvale
