#include "platform/final_path.h"

#include "platform/offline/machine.h"
#include "platform/offline/stored_text.h"
#include "platform/offline/true_path.h"

namespace bromvale {

std::string finalPath(const std::string& path, Links links) {
    using namespace offline;
    Location location;
    const StoredText stored{std::string_view(path)};
    if (machine().drives.locateStored(stored.view(), location) != 0) return {};
    const std::string found =
        truePath(location, links == Links::Open ? LinkAtEnd::IsMeant : LinkAtEnd::LeadsOn);
    return std::string(AnsiText(found).view());
}

}  // namespace bromvale
