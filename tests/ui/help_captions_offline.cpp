// What the help calls by name is called so in the window: captions come from the layout tables, and from the
// help's pages all that they print in bold. The other way round, what can be clicked has its place in the
// help.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>

#include "platform/offline/locale/stored_text.h"
#include "tests/ui/form_rows.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

using Captions = std::set<std::string>;

constexpr int kLeftButton = 1;

// Those that the program gives to controls later, beside the tables.
const Captions kGivenLater{"Entfernen", "<< Details"};

std::string withoutAccessKey(std::string caption) {
    std::erase(caption, '&');
    return caption;
}

// A page of the help in Windows-1252, with one blank for each run of them.
std::string helpPage(const std::string& name) {
    const std::filesystem::path folder = std::filesystem::path(BROMVALE_SOURCE_DIR) / "resources" / "help";
    std::ifstream file(folder / (name + ".html"), std::ios::binary);
    const std::string utf8{std::istreambuf_iterator<char>(file), {}};
    EXPECT_FALSE(utf8.empty()) << name;
    return std::regex_replace(offline::ansiFromStored(offline::storedFromUtf8(utf8)), std::regex("[ \r\n]+"),
                              " ");
}

std::string withoutEntities(std::string text) {
    for (const auto& [entity, sign] : {std::pair{"&gt;", ">"}, {"&lt;", "<"}, {"&shy;", ""}, {"&amp;", "&"}})
        text = std::regex_replace(text, std::regex(entity), sign);
    return text;
}

// What stands in bold, but for words of the text itself.
Captions quotedIn(const std::string& page) {
    Captions quoted;
    const std::regex bold("<b>(.*?)</b>");
    for (std::sregex_iterator found(page.begin(), page.end(), bold), end; found != end; ++found)
        quoted.insert(withoutEntities((*found)[1]));
    return quoted;
}

void addColumns(Captions& captions, const ListView& list) {
    for (const ListView::Column& column : list.columns()) {
        if (column.width > 0) captions.insert(column.heading);
    }
}

// Both captions of the entries that count the marked rows.
void addMenuOf(Captions& captions, ListPage& page, ListView& list, const MenuItem& menu) {
    for (const bool several : {false, true}) {
        for (int row = 1; row <= list.count(); ++row) list.item(row).setSelected(several);
        page.mouseUp(kLeftButton);
        for (const MenuItem* entry : menu.children()) captions.insert(withoutAccessKey(entry->caption()));
    }
}

class HelpCaptions : public MainFormTest {
  protected:
    static Captions allCaptions() {
        Captions captions = kGivenLater;
        for (const FormRow& row : rowsOf(frmMain())) captions.insert(withoutAccessKey(row.facts.caption));
        for (const FormRow& row : rowsOf(frmError())) captions.insert(withoutAccessKey(row.facts.caption));
        frmError().fill("modMain", "Main", 1, "", 16);
        captions.insert(frmError().caption());
        for (const ListBar::Bar& bar : frmMain().Menu.bars()) {
            captions.insert(bar.caption);
            for (const ListBar::Item& item : bar.items) captions.insert(item.caption);
        }
        addListPages(captions);
        return captions;
    }

  private:
    static void addListPages(Captions& captions) {
        FrmMain& form = frmMain();
        const auto add = [&](auto& page, ListView& list, const MenuItem& menu) {
            addColumns(captions, list);
            for (const char* text : {"a", "b"}) list.add(text, 1);
            addMenuOf(captions, page, list, menu);
        };
        add(form.scan, form.scan.lvwRegKeys, form.scan.mnuPopUpRegKey);
        add(form.backup, form.backup.lvwBackup, form.backup.mnuPopUpBackup);
        add(form.programs, form.programs.lvwDeinstall, form.programs.mnuPopUpDeinst);
        add(form.cleanup, form.cleanup.lvwOrdnerList, form.cleanup.mnuPopUpOrdner);
    }
};

TEST_F(HelpCaptions, WhatStandsInBoldIsACaption) {
    const Captions captions = allCaptions();
    std::size_t quotes = 0;
    const std::filesystem::path folder = std::filesystem::path(BROMVALE_SOURCE_DIR) / "resources" / "help";
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        if (file.path().extension() != ".html") continue;
        for (const std::string& quoted : quotedIn(helpPage(file.path().stem().string()))) {
            ++quotes;
            EXPECT_TRUE(captions.contains(quoted)) << file.path().filename() << ": " << quoted;
        }
    }
    EXPECT_GT(quotes, 90u);
}

struct Topic {
    const char* container;  // the outermost one
    std::vector<const char*> pages;
};
const Topic kTopics[] = {
    {"Frame1", {"registry-scan", "ergebnisliste"}},
    {"Frame2", {"backup-bereich", "wiederherstellen"}},
    {"Frame3", {"bug-report"}},
    {"Frame4", {"programme-deinstallieren"}},
    {"Frame5", {"optionen"}},
    {"Frame7", {"festplatte-aufraeumen"}},
    {"mnuPopUp", {"hauptfenster"}},
};

// The animation can't be used, which is all that the help says of it.
bool canBeClicked(const FormRow& row) {
    const bool kind = row.kind == ControlKind::Button || row.kind == ControlKind::CheckBox ||
                      row.kind == ControlKind::OptionButton || row.kind == ControlKind::Menu;
    return kind && row.container != "Frame4Agents" && std::string_view(row.facts.caption) != "-" &&
           row.facts.caption[0] != '<';
}

TEST_F(HelpCaptions, WhatCanBeClickedIsNamedOnTheHelpsPageAboutIt) {
    const std::vector<FormRow> rows = rowsOf(frmMain());
    std::map<std::string, std::string> containers;
    for (const FormRow& row : rows) containers[row.name] = row.container;
    std::size_t named = 0;
    for (const Topic& topic : kTopics) {
        Captions quoted;
        for (const char* page : topic.pages) quoted.merge(quotedIn(helpPage(page)));
        for (const FormRow& row : rows) {
            std::string outermost = row.name;
            while (!containers[outermost].empty()) outermost = containers[outermost];
            if (outermost != topic.container || !canBeClicked(row)) continue;
            ++named;
            EXPECT_TRUE(quoted.contains(withoutAccessKey(row.facts.caption)))
                << topic.pages[0] << " lacks " << row.facts.caption;
        }
    }
    EXPECT_GT(named, 35u);
}

TEST_F(HelpCaptions, TheBarAndTheErrorDialogAreInTheHelp) {
    const Captions window = quotedIn(helpPage("hauptfenster"));
    for (const ListBar::Bar& bar : frmMain().Menu.bars()) {
        EXPECT_TRUE(window.contains(bar.caption)) << bar.caption;
        for (const ListBar::Item& item : bar.items)
            EXPECT_TRUE(window.contains(item.caption)) << item.caption;
    }
    const Captions dialog = quotedIn(helpPage("fehlerbericht"));
    for (const FormRow& row : rowsOf(frmError())) {
        if (!canBeClicked(row)) continue;
        EXPECT_TRUE(dialog.contains(withoutAccessKey(row.facts.caption))) << row.facts.caption;
    }
}

}  // namespace
}  // namespace bromvale::testing
