#include "platform/controls/menu.h"

#include "platform/events.h"

namespace bromvale {

void MenuItem::userChoose() {
    if (enabled() && visible()) dispatchUserEvent(onClick);
}

}  // namespace bromvale
