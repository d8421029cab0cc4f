#include "core/attempt.h"
#include "core/log.h"
#include "internet/web_page.h"
#include "platform/shell.h"
#include "ui/navigation.h"

namespace bromvale {

void CallWebSite() {
    constexpr Tags tags{"modInternet", "CallWebSite"};
    const auto onFailure = [&](const Failure& failure) {
        ErrHandle(tags.modul, tags.funktion, "", failure.number, failure.description, kStyleExclamation,
                  kHide);
        return Ending::Next;
    };
    tags.trace("started");
    attempt(onFailure, [] {
        ShellExecuteA(nullptr, nullptr, (webServices() + "/").c_str(), nullptr, nullptr, SW_SHOWMAXIMIZED);
    });
    tags.trace("endet");
}

}  // namespace bromvale
