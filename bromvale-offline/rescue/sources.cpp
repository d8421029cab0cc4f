#include "bromvale-offline/rescue/sources.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "bromvale-offline/rescue/report.h"
#include "platform/offline/hives/hive_values.h"
#include "platform/offline/hives/log_names.h"
#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

constexpr int kWrongUse = 2;

bool isUser(const DiskUser& user, const std::string& wanted) {
    const std::u16string name = wideFromUtf8(wanted).text;
    return sameName(user.name, name) || sameName(user.account, name) || user.sid == wanted;
}

std::string listOf(const std::vector<DiskUser>& users) {
    std::string text;
    for (const DiskUser& user : users) {
        text += "\n  " + shownText(utf8Of(user.name));
        if (!user.sid.empty()) text += "  " + shownText(user.sid);
        if (!user.problem.empty()) text += "  (" + shownText(user.problem) + ")";
    }
    return text;
}

std::string askForUser(const std::vector<DiskUser>& users) {
    std::fprintf(stderr, "This Windows has several users:%s\nWhich one? (a name, or all) ",
                 listOf(users).c_str());
    std::string answer;
    std::getline(std::cin, answer);
    return answer;
}

std::vector<DiskUser> chosenUsers(const WindowsDisk& disk, const std::string& option) {
    if (disk.users.empty()) return {};
    std::string wanted = option;
    std::vector<DiskUser> withHives;
    std::ranges::copy_if(disk.users, std::back_inserter(withHives),
                         [](const DiskUser& user) { return user.hive || user.classes; });
    if (wanted.empty() && disk.users.size() == 1) return disk.users;
    if (wanted.empty() && withHives.size() == 1) return withHives;
    if (wanted.empty() && ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0)
        wanted = askForUser(disk.users);
    if (wanted.empty())
        throw RescueStop{
            kWrongUse, "this Windows has several users; choose with --user NAME, --user SID or --user all:" +
                           listOf(disk.users)};
    if (wanted == "all") {
        for (const DiskUser& user : disk.users) {
            if (!user.hive && !user.classes && !user.problem.empty())
                sayLine("user " + utf8Of(user.name) + ": " + user.problem);
        }
        return withHives;
    }
    std::vector<DiskUser> chosen;
    std::ranges::copy_if(disk.users, std::back_inserter(chosen),
                         [&](const DiskUser& user) { return isUser(user, wanted); });
    if (chosen.empty())
        throw RescueStop{kWrongUse,
                         "this Windows has no user '" + wanted + "'; there are:" + listOf(disk.users)};
    if (chosen.size() > 1)
        throw RescueStop{kWrongUse, "several users of this Windows are called '" + wanted +
                                        "'; choose by SID:" + listOf(chosen)};
    return chosen;
}

std::u16string liveKeyOf(HiveRole role, const DiskUser* user) {
    const std::u16string sid = user == nullptr ? u"" : wideFromUtf8(user->sid).text;
    switch (role) {
        case HiveRole::Software: return u"HKEY_LOCAL_MACHINE\\Software";
        case HiveRole::System: return u"HKEY_LOCAL_MACHINE\\System";
        case HiveRole::DefaultUser: return u"HKEY_USERS\\.DEFAULT";
        case HiveRole::User: return sid.empty() ? u"HKEY_CURRENT_USER" : u"HKEY_USERS\\" + sid;
        case HiveRole::UserClasses:
            return sid.empty() ? u"HKEY_CURRENT_USER\\Software\\Classes"
                               : u"HKEY_USERS\\" + sid + u"_Classes";
        default: return u"HKEY_LOCAL_MACHINE";
    }
}

// The index of the hive, or nothing where it can't be used; that was said then.
std::optional<std::size_t> addHive(Sources& sources, const FoundHive& found, const DiskUser* user,
                                   std::size_t userIndex, bool withPrints) {
    if (!found.usable()) {
        sayLine(found.path + ": " + found.problem);
        sources.whole = false;
        return std::nullopt;
    }
    SourceHive hive;
    hive.loaded = loadHive(found.path, found.logs, withPrints);
    sayLine(found.path + ": " + hive.loaded.status);
    sources.whole = sources.whole && hive.loaded.hive;
    if (!hive.loaded.hive) return std::nullopt;
    hive.role = found.role;
    hive.user = userIndex;
    hive.liveKey = liveKeyOf(found.role, user);
    hive.isLink = found.isLink;
    hive.mandatory = user != nullptr && user->mandatory;
    sources.hives.push_back(std::move(hive));
    return sources.hives.size() - 1;
}

// Null where it can't be read; that was said then.
std::shared_ptr<const CregTree> openCreg(Sources& sources, const FoundHive& found) {
    auto read = found.usable() ? readCreg(found.path) : found.problem;
    if (const std::string* problem = std::get_if<std::string>(&read)) {
        sayLine(found.path + ": " + *problem);
        sources.whole = false;
        return nullptr;
    }
    auto tree = std::make_shared<CregTree>(std::get<CregTree>(std::move(read)));
    sayLine(found.path + ": " + std::to_string(tree->keys) + " keys, read only");
    return tree;
}

void addCreg(Sources& sources, HiveRole role, const std::u16string& key) {
    const FoundHive* const found = sources.disk->hive(role);
    if (found == nullptr) return;
    if (auto tree = openCreg(sources, *found)) sources.cregs.push_back({key, std::move(tree)});
}

void openOf9x(Sources& sources, const Options& options) {
    const WindowsDisk& disk = *sources.disk;
    if (!hasCregReader())
        throw RescueStop{kWrongUse,
                         "this is a Windows 95, 98 or ME, whose registry is read by a library that this "
                         "program was built without; install libcreg-dev and build it again"};
    addCreg(sources, HiveRole::Machine, u"HKEY_LOCAL_MACHINE");
    addCreg(sources, HiveRole::MachineClasses, u"HKEY_LOCAL_MACHINE\\Software\\Classes");
    addCreg(sources, HiveRole::Users, u"HKEY_USERS");
    for (const DiskUser& user : chosenUsers(disk, options.rescue.user))
        sources.users.push_back({user, {}, {}, user.hive ? openCreg(sources, *user.hive) : nullptr});
}

void openOfNt(Sources& sources, const Options& options) {
    const WindowsDisk& disk = *sources.disk;
    const bool prints = options.rescue.write;
    for (const FoundHive& hive : disk.hives) addHive(sources, hive, nullptr, 0, prints);
    for (const DiskUser& user : chosenUsers(disk, options.rescue.user)) {
        if (!user.problem.empty()) sayLine("user " + utf8Of(user.name) + ": " + user.problem);
        SourceUser source{user, {}, {}, nullptr};
        const std::size_t index = sources.users.size();
        if (user.hive) source.hive = addHive(sources, *user.hive, &user, index, prints);
        if (user.classes) source.classes = addHive(sources, *user.classes, &user, index, prints);
        sources.users.push_back(std::move(source));
    }
}

void openDisk(Sources& sources, const Options& options) {
    auto found = findWindows(options.rescue.windows, options.drives);
    if (const DiskProblem* problem = std::get_if<DiskProblem>(&found))
        throw RescueStop{kWrongUse, problem->text()};
    sources.disk = std::get<WindowsDisk>(std::move(found));
    sayLine(windowsText(sources) + " in " + sources.disk->folder);
    for (const std::string& warning : sources.disk->warnings) sayLine(warning);
    if (sources.disk->hibernation == Hibernation::Hibernated)
        sayLine(sources.disk->hibernationFile +
                ": this Windows is hibernated or was shut down for a fast start; what its registry holds now "
                "may be "
                "newer than its files");
    if (sources.is9x()) {
        openOf9x(sources, options);
    } else {
        openOfNt(sources, options);
    }
    if (sources.hives.empty() && sources.cregs.empty())
        throw RescueStop{kWrongUse,
                         options.rescue.windows + ": none of the hives of this Windows can be read"};
}

// What one of two hives has would hide the other's, and a file that is two hives would be written twice.
void requireOnce(const Sources& sources, const RescueOptions::HiveOption& given) {
    for (const auto& [key, index] : sources.mounts) {
        std::error_code error;
        if (sameName(key, given.key))
            throw RescueStop{kWrongUse, utf8Of(given.key) + " is given twice; a key has one hive"};
        const std::string& other = sources.hives[index].loaded.path;
        if (std::filesystem::equivalent(other, given.file, error))
            throw RescueStop{kWrongUse, given.file + " and " + other + " are the same file; give it once"};
    }
}

void openHives(Sources& sources, const Options& options) {
    for (const auto& given : options.rescue.hives) {
        requireOnce(sources, given);
        std::vector<FoundLog> logs;
        for (const std::string& log : given.logs)
            logs.push_back({logNameOf(log).value_or(LogName::Log1), log});
        if (given.logs.empty()) logs = foundLogsOf(given.file);
        SourceHive hive;
        hive.loaded = loadHive(given.file, logs, options.rescue.write);
        if (!hive.loaded.hive) throw RescueStop{kWrongUse, given.file + ": " + hive.loaded.status};
        sayLine(given.file + ": " + hive.loaded.status);
        hive.liveKey = given.key;
        sources.mounts.emplace_back(given.key, sources.hives.size());
        sources.hives.push_back(std::move(hive));
    }
}

}  // namespace

void sayLine(const std::string& text) {
    std::string shown;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        shown += shownText(line) + "\n";
    }
    std::fprintf(stderr, "bromvale-offline: %s", shown.c_str());
}

Sources openSources(const Options& options) {
    Sources sources;
    if (!options.rescue.windows.empty()) {
        openDisk(sources, options);
    } else {
        openHives(sources, options);
    }
    return sources;
}

std::string windowsText(const Sources& sources) {
    if (!sources.disk) return {};
    const WindowsDisk& disk = *sources.disk;
    std::string text = disk.product.empty() ? "Windows" : utf8Of(disk.product);
    if (!disk.servicePack.empty()) text += " " + utf8Of(disk.servicePack);
    text += ", " + std::to_string(disk.version.major) + "." + std::to_string(disk.version.minor) + "." +
            std::to_string(disk.nt ? disk.version.build : disk.version.build & 0xFFFF);
    if (disk.nt) text += disk.is64Bit ? ", 64-bit" : ", 32-bit";
    return text;
}

}  // namespace bromvale::offline
