#include "tests/proof/trials/trial.h"

#include <algorithm>

#include "platform/offline/machine.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

Row rowAt(int number) {
    const ListItem& item = frmMain().scan.lvwRegKeys.item(number);
    return {item.column(kKeyLine), item.column(kValueName), item.column(kValueData),
            item.column(kHiveHandle)};
}

std::string told(const Row& row) {
    return readable(row.keyLine) + " | " + readable(row.valueName) + " | " + readable(row.valueData) + " | " +
           row.hive;
}

}  // namespace

Trial::Trial(const Model& model, const std::string& hostFolder) : model_(model), stage_(model, hostFolder) {
    static_cast<void>(frmMain());
    atStart_ = readRegistry();
    RegistrySnapshot held = atStart_;
    for (const auto& [path, key] : subTree(atStart_, u"HKEY_CURRENT_USER\\Software\\Bromvale"))
        held.erase(path);
    same("the machine holds something else", snapshotOf(model_), held);
    readBack(model_);
    counts_.machines = 1;
}

void Trial::run() {
    scan();
    remove();
    putBack();
    scan();
    frmMain().scan.cmdAbbrechen.userClick();
    uninstall();
    useBackupPage();
    emptyFolders();
}

void Trial::same(const std::string& what, const RegistrySnapshot& before, const RegistrySnapshot& after) {
    for (const std::string& line : differences(before, after)) problem(what + ": " + line);
}

void Trial::scan() {
    const Findings expected = expected_ = oracle_.scan(model_);
    frmMain().scan.cmdStart.setCaption("&Start");
    frmMain().scan.cmdStart.userClick();
    compareRows(expected.rows);
    const std::string total = " von " + std::to_string(expected.entries) + " Eintr\xE4gen = ";
    if (frmMain().scan.lblScanBericht.caption().find(total) == std::string::npos && expected.entries > 0)
        problem("the report is " + readable(frmMain().scan.lblScanBericht.caption()) + ", not" +
                readable(total));
    same("the scan changed the registry", atStart_, readRegistry());
    counts_.entries += expected.entries;
    counts_.rows += static_cast<int>(expected.rows.size());
}

void Trial::compareRows(const std::vector<Row>& expectedRows) {
    std::vector<Row> got;
    for (int number = 1; number <= frmMain().scan.lvwRegKeys.count(); ++number) got.push_back(rowAt(number));
    std::vector<Row> expected = expectedRows;
    // A removal switches the list's sorting on.
    if (frmMain().scan.lvwRegKeys.sorted()) {
        std::sort(got.begin(), got.end());
        std::sort(expected.begin(), expected.end());
    }
    if (got == expected) return;
    problem("the rows differ: " + std::to_string(expected.size()) + " expected, " +
            std::to_string(got.size()) + " found");
    for (std::size_t i = 0; i < std::max(got.size(), expected.size()); ++i) {
        const bool both = i < got.size() && i < expected.size();
        if (both && got[i] == expected[i]) continue;
        problem("  expected " + (i < expected.size() ? told(expected[i]) : "nothing"));
        problem("  found    " + (i < got.size() ? told(got[i]) : "nothing"));
        if (problems_.size() > 12) return;
    }
}

}  // namespace bromvale::proof
