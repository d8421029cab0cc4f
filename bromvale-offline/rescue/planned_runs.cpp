// The machines that a run of the tool scans.
#include <algorithm>

#include "bromvale-offline/rescue/report.h"
#include "bromvale-offline/rescue/sources.h"
#include "platform/offline/hives/hive_values.h"
#include "platform/offline/locale/code_page.h"

namespace bromvale::offline {
namespace {

// kNil as well where the way there is damaged: then there is nothing to be mounted.
Cell findQuietly(const Hive& hive, std::u16string_view path) {
    try {
        return hive.find(hive.root(), path);
    } catch (const HiveDamage&) {
        return kNil;
    }
}

std::u16string currentControlSet(const WindowsDisk& disk) {
    const std::string number = std::to_string(1000 + disk.controlSet).substr(1);
    return u"ControlSet" + std::u16string(number.begin(), number.end());
}

// Where the code page of the disk's programs stands, as a text of digits.
UINT codePageOf(const Sources& sources) {
    for (const SourceHive& hive : sources.hives) {
        if (hive.role != HiveRole::System) continue;
        try {
            const std::u16string key = currentControlSet(*sources.disk) + u"\\Control\\Nls\\CodePage";
            if (textAt(hive.loaded.hive->hive(), key, u"ACP") == u"1250") return 1250;
        } catch (const HiveDamage&) {
            return 1252;
        }
    }
    return 1252;
}

struct View {
    std::string name;
    Halves halves = Halves::None;
};

std::vector<View> viewsOf(const Sources& sources, WantedView wanted) {
    if (!sources.disk || !sources.disk->is64Bit) {
        if (wanted == WantedView::Only64) throw RescueStop{2, "this Windows has one view, that of 32 bits"};
        return {{"", Halves::None}};
    }
    const View wide{"64", Halves::SeenBy64};
    const View narrow{"32", Halves::SeenBy32};
    if (wanted == WantedView::Only32) return {narrow};
    if (wanted == WantedView::Both) return {wide, narrow};
    return {wide};
}

class Planner {
  public:
    Planner(const Sources& sources, const Options& options) : sources_(sources), options_(options) {}

    [[nodiscard]] PlannedRun plan(const SourceUser* user, const View& view) {
        run_ = {};
        run_.view = view.name;
        if (user != nullptr) run_.user = utf8Of(user->user.name);
        run_.plan.isDisk = sources_.disk || !sources_.hives.empty();
        run_.plan.os = options_.os;
        run_.plan.drives = options_.drives;
        if (sources_.disk) describe(*sources_.disk, user, view);
        for (const auto& [key, hive] : sources_.mounts) mount(key, hive);
        mountMachine();
        if (user != nullptr) mountUser(*user);
        mountOf9x(user);
        return std::move(run_);
    }

  private:
    void describe(const WindowsDisk& disk, const SourceUser* user, const View& view);
    void mountMachine();
    void mountUser(const SourceUser& user);
    void mountOf9x(const SourceUser* user);
    void mount(const std::u16string& path, std::size_t hive) {
        const auto& mounted = sources_.hives[hive].loaded.hive;
        mountAt(path, hive, mounted->hive().base().root);
    }
    void mountAt(const std::u16string& path, std::size_t hive, Cell place) {
        const bool again = std::ranges::find(run_.hives, hive) != run_.hives.end();
        run_.plan.mounts.push_back({path, sources_.hives[hive].loaded.hive, place, again});
        if (!again) run_.hives.push_back(hive);
    }
    void set(const char* name, const std::u16string& value) {
        if (!value.empty()) run_.plan.environment[name] = value;
    }

    const Sources& sources_;
    const Options& options_;
    PlannedRun run_;
};

void Planner::describe(const WindowsDisk& disk, const SourceUser* user, const View& view) {
    MachinePlan& plan = run_.plan;
    plan.drives[disk.letter] = disk.root;
    plan.os = disk.version;
    plan.windowsFolder = disk.windowsFolder;
    plan.halves = view.halves;
    const bool narrow = view.halves == Halves::SeenBy32;
    plan.programFiles = narrow && !disk.programFilesX86.empty() ? disk.programFilesX86 : disk.programFiles;
    plan.codePage = codePageOf(sources_);
    set("PROGRAMDATA", disk.programData);
    set("ALLUSERSPROFILE", disk.programData);
    set("PUBLIC", disk.publicUser);
    set("COMMONPROGRAMFILES",
        narrow && !disk.commonFilesX86.empty() ? disk.commonFilesX86 : disk.commonFiles);
    set("PROGRAMFILES(X86)", disk.programFilesX86);
    if (disk.is64Bit) set("PROGRAMW6432", disk.programFiles);
    if (user == nullptr) return;
    plan.user = user->user.account.empty() ? user->user.name : user->user.account;
    plan.profile = user->user.profile;
}

void Planner::mountMachine() {
    if (!sources_.disk) return;
    for (std::size_t i = 0; i < sources_.hives.size(); ++i) {
        const SourceHive& hive = sources_.hives[i];
        if (hive.role == HiveRole::User || hive.role == HiveRole::UserClasses) continue;
        mount(hive.liveKey, i);
        const Hive& read = hive.loaded.hive->hive();
        if (hive.role == HiveRole::Software && run_.plan.halves != Halves::None)
            run_.plan.classesApart = findQuietly(read, u"Wow6432Node\\Classes\\CLSID") != kNil &&
                                     findQuietly(read, u"Classes\\Wow6432Node\\CLSID") == kNil;
        if (hive.role != HiveRole::System || sources_.disk->controlSet == 0) continue;
        // A link that Windows makes at its start.
        const Cell current = findQuietly(read, currentControlSet(*sources_.disk));
        if (current != kNil) mountAt(hive.liveKey + u"\\CurrentControlSet", i, current);
    }
}

void Planner::mountUser(const SourceUser& user) {
    if (user.hive) {
        mount(u"HKEY_CURRENT_USER", *user.hive);
        if (!user.user.sid.empty()) mount(sources_.hives[*user.hive].liveKey, *user.hive);
    }
    if (user.classes) {
        mount(u"HKEY_CURRENT_USER\\Software\\Classes", *user.classes);
        run_.plan.mounts.back().alone = true;
        if (!user.user.sid.empty()) mount(sources_.hives[*user.classes].liveKey, *user.classes);
    }
}

// HKEY_CURRENT_USER is a key below HKEY_USERS there: the user's own, whose file may begin with it or not, or
// ".DEFAULT".
void Planner::mountOf9x(const SourceUser* user) {
    run_.plan.cregs = sources_.cregs;
    const std::u16string name = user == nullptr ? u".DEFAULT" : user->user.name;
    const CregKey* own = nullptr;
    if (user != nullptr && user->creg) {
        own = user->creg->root.find(name);
        if (own == nullptr) own = &user->creg->root;
    }
    for (const CregMount& mount : sources_.cregs) {
        if (mount.path != u"HKEY_USERS") continue;
        if (own == nullptr) own = mount.tree->root.find(name);
        if (own == nullptr) own = mount.tree->root.find(u".DEFAULT");
    }
    if (own == nullptr) return;
    auto tree = std::make_shared<CregTree>();
    tree->root = *own;
    run_.plan.cregs.push_back({u"HKEY_CURRENT_USER", std::move(tree)});
}

}  // namespace

std::vector<PlannedRun> plannedRuns(const Sources& sources, const Options& options) {
    std::vector<PlannedRun> runs;
    for (const View& view : viewsOf(sources, options.rescue.view)) {
        Planner planner(sources, options);
        if (sources.users.empty()) runs.push_back(planner.plan(nullptr, view));
        for (const SourceUser& user : sources.users) runs.push_back(planner.plan(&user, view));
    }
    return runs;
}

}  // namespace bromvale::offline
