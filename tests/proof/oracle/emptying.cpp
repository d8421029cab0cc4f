#include "tests/proof/oracle/emptying.h"

#include <algorithm>

namespace bromvale::proof {
namespace {

bool isReachable(const System& system, const Text& name) {
    const bool cut = name.back() == u'.' || name.back() == u' ';
    return system.shortNames || (isExactOn(system.codePage, name) && !cut);
}

class Emptying {
  public:
    explicit Emptying(const Model& model) : model_(model), drive_(model.drive) {}

    void empty(View path) {
        if (path[1] != u':') return;
        Entry* folder = &drive_;
        std::string host;
        for (const Text& name : split(path.substr(2))) {
            const auto found =
                std::find_if(folder->entries.begin(), folder->entries.end(),
                             [&](const Entry& entry) { return equalNoCase(entry.name, name); });
            // A folder that is reached through a link is another one.
            if (found == folder->entries.end() || found->kind != EntryKind::Folder) return;
            folder = &*found;
            host += "/" + utf8(folder->name);
        }
        if (folder == &drive_) return;
        result.folders.insert(host);
        std::erase_if(folder->entries,
                      [&](const Entry& entry) { return goes(entry, host + "/" + utf8(entry.name)); });
    }
    Emptied result;

  private:
    bool goes(const Entry& entry, const std::string& host) {
        const bool folder = entry.kind == EntryKind::Folder;
        if (!isReachable(model_.system, entry.name) || (folder && !model_.plan.permanent && !isOpen(entry))) {
            doubt(entry, host);
            return false;
        }
        if (folder && model_.plan.permanent && !entry.entries.empty()) return false;
        take(entry, host);
        return true;
    }
    // Every folder below can be looked into, and every link taken out.
    bool isOpen(const Entry& folder) const {
        return std::all_of(folder.entries.begin(), folder.entries.end(), [this](const Entry& entry) {
            return entry.kind == EntryKind::File || (isReachable(model_.system, entry.name) &&
                                                     (entry.kind != EntryKind::Folder || isOpen(entry)));
        });
    }
    void take(const Entry& entry, const std::string& host) {
        result.gone.insert(host);
        for (const Entry& below : entry.entries) take(below, host + "/" + utf8(below.name));
    }
    void doubt(const Entry& entry, const std::string& host) {
        result.uncertain.insert(host);
        for (const Entry& below : entry.entries) doubt(below, host + "/" + utf8(below.name));
    }

    const Model& model_;
    Entry drive_;
};

}  // namespace

bool isTakenAsItStands(const System& system, View path) {
    const bool share = path.starts_with(u"\\\\");
    if (!isExactOn(system.codePage, path) || path.size() < 4 ||
        (!share && (path[1] != u':' || path[2] != u'\\')))
        return false;
    const std::vector<Text> names = split(path.substr(2));
    return std::none_of(names.begin(), names.end(),
                        [](const Text& name) { return name.back() == u'.' || name.back() == u' '; });
}

Emptied emptied(const Model& model, const std::vector<Text>& list) {
    Emptying emptying(model);
    for (const Text& line : list) {
        if (isTakenAsItStands(model.system, line)) emptying.empty(line);
    }
    return emptying.result;
}

}  // namespace bromvale::proof
