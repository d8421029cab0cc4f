#include "scanner/left_alone.h"

#include "core/log.h"
#include "platform/exact/text.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

constexpr std::string_view kReason = "; bleibt unberührt, da nicht alle Zeichen dargestellt werden können";

// The row that holds these texts, the last one of several; 0 where there is none. A scan within the scan may
// have cleared the list, and the user may have sorted it.
int rowOf(const ListView& list, const EntryGroup::Row& texts) {
    for (int row = list.count(); row >= 1; --row) {
        const ListItem& item = list.item(row);
        if (item.column(kKeyLine) == texts[kKeyLine] && item.column(kValueName) == texts[kValueName] &&
            item.column(kValueData) == texts[kValueData] && item.column(kHiveHandle) == texts[kHiveHandle]) {
            return row;
        }
    }
    return 0;
}

// The first key whose name has marks; 0 where an entry couldn't be kept.
int firstInexactKey(const EntryGroup& group) {
    for (int index = 1; index <= group.count(); ++index) {
        if (!isExact(group.key(index))) return index;
    }
    return 0;
}

}  // namespace

void takeBackRows(EntryGroup& group) {
    ListView& list = frmMain().scan.lvwRegKeys;
    for (const EntryGroup::Row& texts : group.takeListed()) {
        if (const int row = rowOf(list, texts); row > 0) list.remove(row);
    }
}

void traceLeftAlone(const EntryGroup& group, std::string_view hiveName) {
    trace("modCheckKeys", "CheckReg", [&] {
        const int index = firstInexactKey(group);
        if (index == 0)
            return std::string("Ein Objekt bleibt unberührt, da es nicht ganz gelesen werden konnte");
        return std::string(hiveName).append("\\").append(plainText(group.key(index))).append(kReason);
    });
}

std::string leftAloneText(std::string_view hiveName, std::string_view key, std::string_view name,
                          std::string_view value) {
    std::string text(hiveName);
    text.append("\\").append(plainText(key)).append(";").append(plainText(name)).append("=");
    return text.append(plainText(value)).append(kReason);
}

}  // namespace bromvale
