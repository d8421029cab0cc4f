#include "internet/web_page.h"

#include "base/text.h"
#include "core/state.h"
#include "platform/internet.h"

namespace bromvale {
namespace {

constexpr DWORD kReadCount = 3000;

}  // namespace

std::string webServices() {
    return "http://" + WebHost;
}

// Nobody looks at the results: what did not come in stays blank, and blanks do not count.
std::string readPage(const std::string& address) {
    std::string buffer(1000, ' ');
    buffer.resize(kReadCount, ' ');  // the read may bring more than the thousand
    const HINTERNET session = InternetOpenA(AppTitle.c_str(), kInternetOpenDirect, nullptr, nullptr, 0);
    const HINTERNET page = InternetOpenUrlA(session, address.c_str(), nullptr, 0, kInternetReload, 0);
    DWORD notUsed = 0;
    InternetReadFile(page, buffer.data(), kReadCount, &notUsed);
    InternetCloseHandle(page);
    InternetCloseHandle(session);
    return Replace(buffer, " ", "");
}

}  // namespace bromvale
