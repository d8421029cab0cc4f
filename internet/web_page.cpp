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

}  // namespace bromvale
