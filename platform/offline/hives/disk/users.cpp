// The users of a Windows NT to 11: those of the machine's list, and folders of users that it doesn't have.
#include <algorithm>
#include <array>
#include <set>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/hives/hive_values.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::u16string_view kProfileList = u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
constexpr std::u16string_view kExplorer = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";
constexpr std::string_view kClassesPath = "Microsoft\\Windows\\UsrClass.dat";

// Services, and the accounts that Windows makes for single ones of them and for application pools.
bool isServiceSid(std::string_view sid) {
    constexpr std::array<std::string_view, 3> kServices{"S-1-5-18", "S-1-5-19", "S-1-5-20"};
    constexpr std::array<std::string_view, 5> kVirtual{"S-1-5-80-", "S-1-5-82-", "S-1-5-83-", "S-1-5-90-",
                                                       "S-1-5-96-"};
    return std::ranges::find(kServices, sid) != kServices.end() ||
           std::ranges::any_of(kVirtual, [&](std::string_view start) { return sid.starts_with(start); });
}

class UserSearch {
  public:
    UserSearch(DiskSearch& search, const Hive& software) : search_(search), software_(software) {}

    void find() {
        const Cell list = software_.find(software_.root(), kProfileList);
        if (list != kNil) {
            for (const Cell cell : software_.subKeys(software_.key(list))) {
                try {
                    fromList(cell);
                } catch (const HiveDamage& damage) {
                    search_.warn(std::string("An entry of the list of users can't be read: ") +
                                 damage.what() + ".");
                }
            }
        }
        parents_.push_back(search_.disk.profiles);
        for (const std::u16string& parent : parents_) fromFolders(parent);
    }

  private:
    void fromList(Cell cell) {
        const std::u16string key = software_.key(cell).name();
        const std::u16string path(std::u16string(kProfileList) + u"\\" + key);
        const auto image = textAt(software_, path, u"ProfileImagePath");
        if (!image) return;
        DiskUser user;
        user.sid = shown(key);
        // Windows puts a profile aside so that it couldn't load, and takes it back under its own name.
        if (user.sid.ends_with(".bak")) user.sid.resize(user.sid.size() - 4);
        user.profile = search_.expanded(*image);
        const InsidePath folder = search_.hostPath(user.profile);
        if (folder.isFolder()) user.folder = folder.path;
        if (isServiceSid(user.sid)) {
            if (!user.folder.empty()) seen_.insert(user.folder);
            return;
        }
        user.problem = whyNoFolder(user, folder);
        rememberParent(user.profile);
        add(std::move(user));
    }

    [[nodiscard]] std::string whyNoFolder(const DiskUser& user, const InsidePath& folder) const {
        if (folder.isFolder()) return {};
        if (search_.driveOf(user.profile) == nullptr)
            return "the profile lies on a drive that is not at hand: " + shown(user.profile);
        if (folder.state == InsidePath::State::Outside)
            return "the profile's folder lies behind a link that leads out of the disk";
        return folder.found() ? "the profile's folder is a file" : "the profile's folder is not there";
    }

    void rememberParent(const std::u16string& profile) {
        const std::u16string parent = profile.substr(0, std::min(profile.rfind(u'\\'), profile.size()));
        const bool known =
            std::ranges::any_of(parents_, [&](const auto& other) { return sameName(other, parent); });
        // A user's folder in the root of a drive doesn't make all that lies there users.
        if (!known && parent.size() > 2) parents_.push_back(parent);
    }

    void fromFolders(const std::u16string& parent) {
        const InsidePath folder = search_.hostPath(parent);
        if (!folder.isFolder()) return;
        for (const std::string& entry : InsideFolder::entries(folder.path)) {
            const std::string path = folder.path + "/" + entry;
            struct stat status {};
            if (::lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || isTemplate(entry))
                continue;
            DiskUser user;
            user.profile = parent + u"\\" + wideFromStored(storedFromUtf8(entry));
            user.folder = path;
            const bool hasHive =
                !namesLike(path, "NTUSER.DAT").empty() || !namesLike(path, "NTUSER.MAN").empty();
            if (hasHive) add(std::move(user));
        }
    }

    // What new users are made of, and what all share.
    [[nodiscard]] bool isTemplate(const std::string& entry) const {
        const std::u16string name = wideFromStored(storedFromUtf8(entry));
        constexpr std::array<std::u16string_view, 6> kNames{u"Default", u"Default User", u"All Users",
                                                            u"Public",  u"LocalService", u"NetworkService"};
        constexpr std::array<std::u16string_view, 4> kValues{u"DefaultUserProfile", u"AllUsersProfile",
                                                             u"Default", u"Public"};
        return std::ranges::any_of(kNames, [&](auto other) { return sameName(name, other); }) ||
               std::ranges::any_of(kValues, [&](auto value) {
                   return sameName(name, lastNameOf(textAt(software_, kProfileList, value).value_or(u"")));
               });
    }

    void add(DiskUser&& user) {
        user.name = lastNameOf(user.profile);
        if (!user.folder.empty() && !seen_.insert(user.folder).second) return;
        if (!user.folder.empty()) look(user);
        search_.disk.users.push_back(std::move(user));
    }

    void look(DiskUser& user) {
        const InsideFolder& drive = *search_.driveOf(user.profile);
        user.hive = hiveNamed(drive, user.folder, "NTUSER.MAN", HiveRole::User, HiveContent::User);
        user.mandatory = user.hive.has_value() || sameEnd(user.name, u".man");
        if (!user.hive)
            user.hive = hiveNamed(drive, user.folder, "NTUSER.DAT", HiveRole::User, HiveContent::User);
        if (!user.hive) {
            user.problem = "the profile has no NTUSER.DAT";
            return;
        }
        std::optional<OpenHive> open;
        if (user.hive->usable()) open.emplace(openHive(user.hive->path, user.hive->logs));
        const Hive* const hive = open && open->hive ? &*open->hive : nullptr;
        if (hive == nullptr) user.problem = user.hive->path + " can't be used: " + user.hive->problem;
        try {
            if (hive != nullptr) user.account = textAt(*hive, kExplorer, u"Logon User Name").value_or(u"");
            findClasses(user, drive, hive);
        } catch (const HiveDamage& damage) {
            user.problem = user.hive->path + " is damaged: " + damage.what();
        }
    }

    static bool sameEnd(std::u16string_view name, std::u16string_view end) {
        return name.size() > end.size() && sameName(name.substr(name.size() - end.size()), end);
    }

    // Where the user's own hive says, in the language of the time; else where Vista and later have it, else
    // wherever it lies two folders deep.
    void findClasses(DiskUser& user, const InsideFolder& drive, const Hive* hive) {
        std::vector<std::string> folders;
        if (hive != nullptr) {
            std::u16string local =
                textAt(*hive, std::u16string(kExplorer) + u"\\User Shell Folders", u"Local AppData")
                    .value_or(u"");
            replaceVariable(local, u"USERPROFILE", user.profile);
            if (const InsidePath path = search_.hostPath(search_.expanded(local)); path.isFolder())
                folders.push_back(path.path);
        }
        if (const InsidePath path = drive.find(user.folder, "AppData\\Local"); path.isFolder())
            folders.push_back(path.path);
        for (const std::string& folder : folders)
            if (takeClasses(user, drive, folder)) return;
        for (const std::string& first : InsideFolder::entries(user.folder)) {
            const InsidePath upper = drive.follow(user.folder, first);
            if (!upper.isFolder()) continue;
            for (const std::string& second : InsideFolder::entries(upper.path)) {
                const InsidePath folder = drive.follow(upper.path, second);
                if (folder.isFolder() && takeClasses(user, drive, folder.path)) return;
            }
        }
    }

    bool takeClasses(DiskUser& user, const InsideFolder& drive, const std::string& local) {
        const InsidePath folder = drive.find(local, kClassesPath.substr(0, kClassesPath.rfind('\\')));
        if (!folder.isFolder()) return false;
        std::optional<FoundHive> hive =
            hiveNamed(drive, folder.path, "UsrClass.dat", HiveRole::UserClasses, HiveContent::UserClasses);
        if (!hive) return false;
        if (hive->usable()) {
            const std::string owner = ownerOf(*hive);
            if (user.sid.empty()) user.sid = owner;
            if (upperStored(owner) != upperStored(user.sid)) hive->problem = "it belongs to " + owner;
        }
        user.classes = std::move(hive);
        return true;
    }

    static std::string ownerOf(const FoundHive& found) {
        const OpenHive open = openHive(found.path, found.logs);
        const std::string name = open.hive ? shown(open.hive->root().name()) : std::string();
        return name.substr(0, std::min(name.rfind('_'), name.size()));
    }

    DiskSearch& search_;
    const Hive& software_;
    std::set<std::string> seen_;           // folders of the host
    std::vector<std::u16string> parents_;  // folders of users' folders
};

}  // namespace

void findUsers(DiskSearch& search, const Hive& software) {
    UserSearch(search, software).find();
}

}  // namespace bromvale::offline
