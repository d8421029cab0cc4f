// What is gone was listed, has its record and its whole copy, and comes back.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/offline/machine.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/proof/trials/trial.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

namespace fs = std::filesystem;

// Paths of the undo files, or of the complete copies beside them.
std::vector<std::string> backups(const std::string& drive, bool whole) {
    std::vector<std::string> paths;
    const fs::path folder = drive + "/Programme/Bromvale/Backup";
    if (!fs::exists(folder)) return paths;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename().string().starts_with("Vollst") == whole)
            paths.push_back(entry.path().string());
    }
    return paths;
}

std::string bytesOfFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

bool isBelow(const Text& key, const Text& target) {
    return key.size() > target.size() && key.starts_with(target) && key[target.size()] == u'\\';
}

}  // namespace

// The numbers of the rows that go.
std::vector<std::size_t> Trial::startRemoval() {
    std::vector<std::size_t> rows;
    std::vector<int> marked;
    for (std::size_t i = 0; i < expected_.rows.size(); ++i) {
        if (model_.plan.markedOnly && i % 3 == 1) continue;
        rows.push_back(i);
        marked.push_back(static_cast<int>(i) + 1);
    }
    FrmMain& form = frmMain();
    if (model_.plan.markedOnly) {
        form.scan.chbRegKeysShow.userClick();
        form.scan.chbMarkierteKeysEntfernen.userClick();
        form.scan.lvwRegKeys.userSelect(marked);
    }
    form.scan.cmdStart.userClick();
    return rows;
}

void Trial::remove() {
    if (!problems_.empty() || expected_.rows.empty()) return;
    const std::vector<std::size_t> removed = startRemoval();
    const RegistrySnapshot after = readRegistry();
    RegistrySnapshot gone;
    for (const auto& [path, key] : atStart_) {
        if (!after.contains(path)) gone.emplace(path, key);
    }
    counts_.keysGone += static_cast<int>(gone.size());
    checkGone(gone, removed);
    checkCopies(gone);
    checkLeft(after, removed);
    RegistrySnapshot rest = atStart_;
    for (const auto& [path, key] : gone) rest.erase(path);
    same("the removal touched what it left", rest, after);
}

// Each key that is gone was aimed at, and each row that aimed at it has its record.
void Trial::checkGone(const RegistrySnapshot& gone, const std::vector<std::size_t>& removed) {
    std::string records;
    for (const std::string& path : backups(stage_.hostDrive(), false)) records += bytesOfFile(path);
    for (const auto& [path, key] : gone) {
        bool aimedAt = false;
        for (const std::size_t i : removed) {
            const Text target = lower(View(expected_.targets[i]));
            if (model_.system.family == Family::Nine && isBelow(path, target)) aimedAt = true;
            if (path != target) continue;
            aimedAt = true;
            const Row& row = expected_.rows[i];
            const std::string record =
                row.keyLine + "\r\n" + row.valueName + "=\"" + row.valueData + "\"\r\n\r\n";
            if (records.find(record) == std::string::npos)
                problem("gone without its record: " + readable(row.keyLine) + " " + readable(row.valueName));
        }
        if (!aimedAt) problem("gone although no row names it: " + readable(key.path));
    }
}

void Trial::checkCopies(const RegistrySnapshot& gone) {
    RegistrySnapshot copies;
    for (const std::string& path : backups(stage_.hostDrive(), true))
        copies.merge(readRegistryFile(bytesOfFile(path), problems_));
    for (const auto& [path, key] : gone) {
        const auto copy = copies.find(path);
        if (copy == copies.end()) {
            problem("gone without a copy: " + readable(key.path));
            continue;
        }
        same("gone without its whole copy", {*gone.find(path)}, {*copy});
    }
}

// Keys that can't be opened, read whole or put into the form, and those with sub keys on the NT family.
bool Trial::mayStay(const Text& target) const {
    const RegistrySnapshot tree = subTree(atStart_, target);
    if (tree.empty()) return true;
    const System& system = model_.system;
    if (system.family != Family::Nine && tree.size() > 1) return true;
    const std::size_t hive = target.find(u'\\');
    const std::int32_t number = target.starts_with(u"HKEY_CURRENT_USER") ? kUser : kMachine;
    const Key* key = model_.hive(number).find(View(target).substr(hive + 1));
    if (key == nullptr || key->denied || target.size() - hive - 1 > 200) return true;
    if (system.family == Family::Modern) return false;
    for (const auto& [path, stored] : tree) {
        if (!isExactOn(system.codePage, stored.path)) return true;
        for (const auto& [name, value] : stored.values) {
            if (!isExactOn(system.codePage, value.name) || !isExactOn(system.codePage, textOf(value.bytes)))
                return true;
        }
    }
    return false;
}

void Trial::checkLeft(const RegistrySnapshot& after, const std::vector<std::size_t>& removed) {
    for (const std::size_t i : removed) {
        const Text& target = expected_.targets[i];
        if (after.contains(lower(View(target))) && !mayStay(target))
            problem("still there: " + readable(target));
    }
}

void Trial::putBack() {
    for (const std::string& path : backups(stage_.hostDrive(), true)) {
        if (const auto error = offline::loadRegFile(path, offline::machine().registry))
            problem("the copy can't be put back: line " + std::to_string(error->line) + " " +
                    readable(error->reason));
    }
    same("put back", atStart_, readRegistry());
}

}  // namespace bromvale::proof
