// Folders are chosen and emptied: nothing outside of them changes, and what can be reached inside is gone.
#include <algorithm>
#include <fstream>

#include "core/settings.h"
#include "platform/offline/machine.h"
#include "tests/proof/oracle/emptying.h"
#include "tests/proof/trials/trial.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

using offline::machine;

constexpr const char* kList = "/Programme/Bromvale/liste.txt";

// The program's own writing.
bool isOwn(const std::string& path) {
    return path == kList || path == "/Programme/Bromvale/bromvale.log";
}

bool isInside(const std::set<std::string>& folders, const std::string& path) {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const std::string& folder) { return path.starts_with(folder + "/"); });
}

}  // namespace

// The list gets no path that would be read as another one.
void Trial::chooseFolders() {
    for (const Text& path : model_.plan.chosen) {
        const std::string before = stage_.fileOnHost("Programme/Bromvale/liste.txt");
        machine().folders.emplace_back(path);
        machine().answers.assign(8, IDYES);
        frmMain().cleanup.cmdOrdnerWählen.userClick();
        machine().answers.clear();
        const std::string after = stage_.fileOnHost("Programme/Bromvale/liste.txt");
        if (before == after) continue;
        if (!isTakenAsItStands(model_.system, path))
            problem("chosen and listed: " + readable(path) + " as " + readable(after));
        // The chosen path, in letters that the page has.
        if (after != before + ansi(model_.system, path) + "\r\n") problem("the list is " + readable(after));
        model_.plan.list.push_back(path);
    }
}

void Trial::emptyFolders() {
    frmMain().showPage(frmMain().cleanup);
    {
        std::ofstream list(stage_.hostDrive() + kList, std::ios::binary);
        for (const Text& line : model_.plan.list) list << ansi(model_.system, line) << "\r\n";
    }
    frmMain().cleanup.Ordnerliste_laden();
    chooseFolders();
    DelFilePermanent = model_.plan.permanent ? 1 : 0;
    const DriveSnapshot before = readDrive(stage_.hostDrive());
    const RegistrySnapshot registry = readRegistry();
    frmMain().cleanup.cmdInhaltLöschen.userClick();
    checkDrive(before, readDrive(stage_.hostDrive()));
    same("emptying changed the registry", registry, readRegistry());
}

void Trial::checkDrive(const DriveSnapshot& before, const DriveSnapshot& after) {
    const Emptied expected = emptied(model_, model_.plan.list);
    for (const auto& [path, content] : before) {
        const auto found = after.find(path);
        const bool gone = found == after.end();
        if (gone) ++counts_.filesGone;
        if (!gone && found->second != content && !isOwn(path)) problem("changed: " + readable(path));
        if (gone && !isInside(expected.folders, path)) {
            problem("gone from outside of the listed folders: " + readable(path));
        } else if (gone && !expected.gone.contains(path) && !expected.uncertain.contains(path)) {
            problem("gone although it stays: " + readable(path));
        } else if (!gone && expected.gone.contains(path)) {
            problem("not emptied: " + readable(path));
        }
    }
    for (const auto& [path, content] : after) {
        if (!before.contains(path) && !isOwn(path)) problem("new: " + readable(path));
    }
}

}  // namespace bromvale::proof
