#include "tests/proof/user/choice.h"

#include <algorithm>
#include <optional>

#include "platform/controls.h"
#include "tests/proof/oracle/scan.h"

namespace bromvale::proof {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kTexts[] = {
    "",       "80",           "0",         "abc",      "99999", "-1", "jemand@beispiel.de",
    "a@b.cd", "Zeile\\nzwei", "\xE4 \xF6", "%s%n\"\\", "1e5"};
constexpr const char* kKeys[] = {"Return", "Escape", "Tab", "Shift+Tab", "Space", "Delete", "F1",
                                 "F2",     "F3",     "F5",  "Up",        "Down",  "Left",   "Right"};
constexpr const char* kAnswers[] = {"Ja", "Ja", "Ja", "Nein", "OK", "Abbrechen"};
constexpr const char* kPages[] = {"Registry Scan starten",
                                  "Backup",
                                  "Registriereditor starten",
                                  "Hilfe",
                                  "Programme deinstallieren",
                                  "Festplatte aufr\xE4umen",
                                  "Optionen",
                                  "Bug-Report",
                                  "Live-Update",
                                  "Homepage"};
constexpr const char* kTrayEntries[] = {"mnuPopUpShowForm",  "mnuPopUpStartScan",    "mnuPopUpStartScan",
                                        "mnuPopUpStartScan", "mnuPopUpBackupZeigen", "mnuPopUpDeinstall",
                                        "mnuPopUpBugReport", "mnuPopUpLiveUpdate",   "mnuPopUpOptionen",
                                        "mnuPopUpAbout"};
// What can be reached on whichever page while something is at work.
constexpr const char* kButtons[] = {
    "cmdAbbrechen",        "cmdAbbrechen",        "cmdAbbrechen",        "cmdStart",
    "cmdEintragen",        "cmdBearbeiten",       "cmdL\xF6schen",       "cmdDeinstall",
    "cmdDeinstallRefresh", "cmdInhaltL\xF6schen", "cmdOrdnerL\xF6schen", "cmdBugReportSenden"};

std::string number(int value) {
    return std::to_string(value);
}

std::string trayMenu(Random& random) {
    if (random.percent(2)) return "with mnuPopUpQuit tray right";
    if (random.percent(8)) return random.percent(50) ? "tray left" : "tray double";
    if (random.percent(10)) return "tray right";
    return std::string("with ") + random.oneOf(kTrayEntries) + " tray right";
}

std::string someSize(Random& random) {
    const int most = random.percent(10) ? 40000 : 18000;
    return "resize " + number(random.below(most)) + " " + number(random.below(most));
}

std::string someState(Random& random) {
    constexpr const char* kStates[] = {"normal", "minimised", "maximised"};
    return std::string("state ") + random.oneOf(kStates);
}

std::string someKey(Random& random, const std::string& target) {
    if (random.percent(25))
        return "key " + target + " Alt+" + std::string(1, static_cast<char>('A' + random.below(26)));
    return "key " + target + " " + random.oneOf(kKeys);
}

// Can be done at any time, whatever stands on the screen then.
std::string sometime(Random& random) {
    const int kind = random.below(100);
    if (kind < 35) return trayMenu(random);
    if (kind < 60) return std::string("click ") + random.oneOf(kButtons);
    if (kind < 78) return std::string("nav ") + random.oneOf(kPages);
    if (kind < 86) return someKey(random, "frmMain");
    if (kind < 90) return someSize(random);
    if (kind < 92) return someState(random);
    if (kind < 94) return "close frmError";
    if (kind < 95) return "close";
    if (kind < 97) return "taskbar";
    return "wait 0.2";
}

Lines before(Random& random) {
    Lines lines;
    while (random.percent(30)) {
        const int most = random.percent(50) ? 12 : 250;
        lines.push_back("at " + number(random.from(1, most)) + " " + sometime(random));
    }
    if (random.percent(12)) lines.push_back("inbox " + trayMenu(random));
    while (random.percent(40)) lines.push_back(std::string("answer ") + random.oneOf(kAnswers));
    return lines;
}

std::string someRows(Random& random, const ListView& list) {
    if (list.count() == 0 || random.percent(10)) return "none";
    if (list.multiSelect() && random.percent(25)) return "all";
    std::string rows = number(random.from(1, list.count()));
    while (list.multiSelect() && random.percent(30)) rows += " " + number(random.from(1, list.count()));
    return rows;
}

// What a list is there for: its page, its buttons and the entries of its menu.
struct List {
    const char* page;
    const char* name;
    std::vector<const char*> buttons;
    std::vector<const char*> entries;
};
const std::vector<List>& lists() {
    static const std::vector<List> all{
        {"Registry Scan starten",
         "lvwRegKeys",
         {"cmdStart"},
         {"mnuPopUpRegKeyEinzeln", "mnuPopUpRegKeyAlle"}},
        {"Backup",
         "lvwBackup",
         {"cmdEintragen", "cmdBearbeiten", "cmdL\xF6schen"},
         {"mnuPopUpBackupBearbeiten", "mnuPopUpBackupEinf\xFCgen", "mnuPopUpBackupL\xF6schen"}},
        {"Programme deinstallieren",
         "lvwDeinstall",
         {"cmdDeinstall", "cmdDeinstallRefresh"},
         {"mnuPopUpDeinstDeinstall", "mnuPopUpDeinstRefresh"}},
        {"Festplatte aufr\xE4umen",
         "lvwOrdnerList",
         {"cmdInhaltL\xF6schen", "cmdOrdnerL\xF6schen"},
         {"mnuPopUpOrdnerHinzuf\xFCgen", "mnuPopUpOrdnerEntfernen", "mnuPopUpOrdnerEinzeln",
          "mnuPopUpOrdnerAlle"}}};
    return all;
}

std::string listMenu(Random& random, std::string_view name) {
    std::string menu = "mouseup " + std::string(name) + " right";
    const auto list = std::ranges::find(lists(), name, &List::name);
    if (list == lists().end() || random.percent(10)) return menu;
    return std::string("with ") + random.oneOf(list->entries) + " " + menu;
}

class ActionOn : public ControlVisitor {
  public:
    ActionOn(Random& random, const Model& model) : random_(random), model_(model) {}
    Lines lines;

    void visit(Button& button) override {
        if (button.name() == "cmdOrdnerW\xE4hlen" && !model_.plan.chosen.empty())
            add("browse " + ansi(model_.system, random_.oneOf(model_.plan.chosen)));
        add("click " + button.name());
    }
    void visit(CheckBox& box) override { add("click " + box.name()); }
    void visit(OptionButton& button) override { add("click " + button.name()); }
    void visit(TextBox& box) override {
        if (box.locked()) return;
        // Names of hosts would be looked up.
        const std::string text =
            box.name() == "txtProxyAdresse" ? random_.percent(80) ? "127.0.0.1" : "" : random_.oneOf(kTexts);
        add("text " + nameOf(box) + " " + text);
    }
    void visit(ComboBox& box) override {
        if (box.count() > 0 && random_.percent(60))
            return add("choose " + box.name() + " " + box.item(random_.below(box.count())));
        add("text " + box.name() + " " + random_.oneOf(kTexts));
    }
    void visit(ListBar&) override {
        if (random_.percent(2)) return add("nav Beenden");
        add(std::string("nav ") + random_.oneOf(kPages));
    }
    void visit(ListView& list) override {
        if (random_.percent(65)) add("select " + list.name() + " " + someRows(random_, list));
        switch (random_.below(6)) {
            case 0: return add("column " + list.name() + " " + number(random_.from(1, 4)));
            case 1: return add(someKey(random_, list.name()));
            case 2:
                if (list.count() == 0) return;
                return add("doubleclick " + list.name() + " " + number(random_.from(1, list.count())));
            case 3: return add("mouseup " + list.name() + " left");
            default: return add(listMenu(random_, list.name()));
        }
    }

  private:
    // Both windows have a box of this name.
    static std::string nameOf(const Control& control) {
        return control.form()->name() == "frmMain" ? control.name()
                                                   : control.form()->name() + "." + control.name();
    }
    void add(std::string line) { lines.push_back(std::move(line)); }

    Random& random_;
    const Model& model_;
};

Lines onAList(Random& random) {
    const List& chosen = random.oneOf(lists());
    const Form* form = loadedForm("frmMain");
    const auto* list = form != nullptr ? as<ListView>(form->find(chosen.name)) : nullptr;
    const std::string rows = random.percent(30) || list == nullptr ? "all" : someRows(random, *list);
    Lines lines{std::string("nav ") + chosen.page, "check chbRegKeysShow 1",
                std::string("select ") + chosen.name + " " + rows, "answer Ja", "answer Ja"};
    lines.push_back(random.percent(50) ? listMenu(random, chosen.name)
                                       : std::string("click ") + random.oneOf(chosen.buttons));
    return lines;
}

Control* someControl(Random& random) {
    std::vector<Control*> controls;
    for (const Form* form : loadedForms()) {
        if (!form->visible()) continue;
        std::ranges::copy_if(form->controls(), std::back_inserter(controls), [](const Control* control) {
            return control->takesFocus() && control->reachable();
        });
    }
    return controls.empty() ? nullptr : random.oneOf(controls);
}

Lines mainActions(Random& random, const Model& model) {
    const int kind = random.below(100);
    if (kind < 6) return {trayMenu(random)};
    if (kind < 11) return {std::string("nav ") + random.oneOf(kPages)};
    if (kind < 21) return {"nav Registry Scan starten", "click cmdStart"};
    if (kind < 24) return {someKey(random, "frmMain")};
    if (kind < 26) return {someSize(random)};
    if (kind < 27) return {someState(random)};
    if (kind < 28) return {"wait 1"};
    if (kind < 29) return {random.percent(40) ? "close" : "taskbar"};
    if (kind < 31) return {"close frmError"};
    if (kind < 46) return onAList(random);
    ActionOn action(random, model);
    if (Control* control = someControl(random)) control->accept(action);
    return action.lines;
}

}  // namespace

std::vector<std::string> chooseActions(Random& random, const Model& model) {
    Lines lines = before(random);
    std::ranges::move(mainActions(random, model), std::back_inserter(lines));
    return lines;
}

std::vector<std::string> chooseAtStart(Random& random) {
    return random.percent(40) ? before(random) : Lines{};
}

}  // namespace bromvale::proof
