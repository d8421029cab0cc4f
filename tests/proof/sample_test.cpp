// A sample of the generated machines on both providers: under Wine the rows of a real registry and the files
// of a real folder. The model's drive becomes the test's folder, which is all that differs from the machines
// that are offline alone.
#include <algorithm>

#include "core/settings.h"
#include "tests/proof/oracle/emptying.h"
#include "tests/proof/oracle/scan.h"
#include "tests/support/test_machine.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

class Sample : public testing::TestMachine, public ::testing::WithParamInterface<int> {
  protected:
    Sample() {
        fillState();
        model_ = generate(static_cast<std::uint64_t>(GetParam()), System{});
        moveDrive();
        for (Key* hive : {&model_.machine, &model_.user}) keepTexts(*hive);
        putUp(model_.machine, HKEY_LOCAL_MACHINE, u"");
        putUp(model_.user, HKEY_CURRENT_USER, u"");
    }

    // The folder below the drive, without its last backslash.
    [[nodiscard]] Text place() const { return wideFolder().substr(3, wideFolder().size() - 4); }

    void moveDrive() {
        Entry drive{u"C:", EntryKind::Folder, {}, {}};
        Entry& folder = drive.make(place() + u"\\Platte", EntryKind::Folder);
        folder.entries = model_.drive.entries;
        withoutLinks(folder);
        model_.drive = drive;
        makeFolderOnDisk(wideFolder() + u"Platte");
        putUp(*model_.drive.find(place() + u"\\Platte"), wideFolder() + u"Platte");
    }
    static void withoutLinks(Entry& folder) {
        std::erase_if(folder.entries, [](const Entry& entry) { return !entry.target.empty(); });
        for (Entry& below : folder.entries) withoutLinks(below);
    }
    void putUp(const Entry& folder, const Text& path) {
        for (const Entry& entry : folder.entries) {
            const Text own = path + u"\\" + entry.name;
            if (entry.kind == EntryKind::File) {
                writeWholeFile(own, "x");
            } else {
                makeFolderOnDisk(own);
                putUp(entry, own);
            }
        }
    }

    [[nodiscard]] Text moved(Text text) const {
        const Text root = wideFolder() + u"Platte\\";
        for (std::size_t at = text.find(u"C:\\"); at != Text::npos; at = text.find(u"C:\\", at + root.size()))
            text.replace(at, 3, root);
        return text;
    }
    void keepTexts(Key& key) {
        key.denied = false;
        std::erase_if(key.values, [](const Value& value) {
            return value.type != kText || textOf(value.bytes).find(u'\0') + 1 != textOf(value.bytes).size();
        });
        for (Value& value : key.values) value.bytes = bytesOf(moved(textOf(value.bytes)));
        // Wine keeps values in the order of their names, Windows in that of their creation.
        std::sort(key.values.begin(), key.values.end(),
                  [](const Value& left, const Value& right) { return comesBefore(left.name, right.name); });
        for (Key& below : key.keys) keepTexts(below);
    }
    void putUp(const Key& key, HKEY hive, const Text& path) {
        if (!path.empty()) makeKey(hive, std::u16string_view(path));
        for (const Value& value : key.values) {
            Text text = textOf(value.bytes);
            text.pop_back();
            setString(hive, std::u16string_view(path), std::u16string_view(value.name),
                      std::u16string_view(text));
        }
        for (const Key& below : key.keys)
            putUp(below, hive, (path.empty() ? Text() : path + u"\\") + below.name);
    }

    void lookAtFiles(const Entry& folder, const Text& path, const std::string& host,
                     const Emptied& expected) {
        for (const Entry& entry : folder.entries) {
            const Text own = path + u"\\" + entry.name;
            const std::string ownHost = host + "/" + utf8(entry.name);
            if (!expected.uncertain.contains(ownHost)) {
                EXPECT_EQ(isOnDisk(own), !expected.gone.contains(ownHost)) << readable(own);
            }
            lookAtFiles(entry, own, ownHost, expected);
        }
    }

    Model model_;
};

std::vector<Row> foundRows() {
    std::vector<Row> rows;
    for (int number = 1; number <= frmMain().scan.lvwRegKeys.count(); ++number) {
        const ListItem& item = frmMain().scan.lvwRegKeys.item(number);
        rows.push_back({item.column(kKeyLine), item.column(kValueName), item.column(kValueData),
                        item.column(kHiveHandle)});
    }
    return rows;
}

std::string told(const std::vector<Row>& rows) {
    std::string text;
    for (const Row& row : rows)
        text += "\n  " + readable(row.keyLine) + " | " + readable(row.valueName) + " | " +
                readable(row.valueData) + " | " + row.hive;
    return text;
}

TEST_P(Sample, AScanFindsWhatTheOracleFinds) {
    Oracle oracle;
    const Findings expected = oracle.scan(model_);
    frmMain().scan.cmdStart.userClick();
    const std::vector<Row> rows = foundRows();
    EXPECT_TRUE(rows == expected.rows) << "expected" << told(expected.rows) << "\nfound" << told(rows) << "\n"
                                       << describe(model_);
}

TEST_P(Sample, EmptyingStaysInItsFolder) {
    model_.plan.permanent = true;
    const Text root = wideFolder() + u"Platte\\";
    std::string list;
    std::vector<Text> folders;
    for (const View name : {u"Leeren", u"Auch\\Daten"}) {
        folders.push_back(root + Text(name));
        list += std::string(folders.back().begin(), folders.back().end()) + "\r\n";
    }
    writeWholeFile(folder() + "liste.txt", list);
    DelFilePermanent = 1;
    frmMain().cleanup.cmdInhaltLöschen_Click();
    std::string host;
    for (const Text& name : split(place() + u"\\Platte")) host += "/" + utf8(name);
    lookAtFiles(*model_.drive.find(place() + u"\\Platte"), wideFolder() + u"Platte", host,
                emptied(model_, folders));
}

INSTANTIATE_TEST_SUITE_P(Of, Sample, ::testing::Range(1, 19));

}  // namespace
}  // namespace bromvale::proof
