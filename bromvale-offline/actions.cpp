#include "bromvale-offline/script.h"

#include <array>
#include <charconv>

#include "bromvale-offline/show.h"
#include "bromvale-offline/words.h"
#include "platform/controls.h"
#include "platform/events.h"
#include "platform/keys.h"
#include "platform/offline/machine.h"
#include "platform/screen.h"

namespace bromvale::offline {
namespace {

Control& named(std::string_view name) {
    if (name.empty()) throw ScriptError{"which control?"};
    if (Control* control = findControl(name)) return *control;
    throw ScriptError{std::string(name) + " does not exist"};
}

template <class Kind>
Kind& mustBe(Control& control) {
    if (Kind* found = as<Kind>(&control)) return *found;
    throw ScriptError{control.name() + " is a " + std::string(kindName(control.kind())) + ", not a " +
                      std::string(kindName(Kind::kKind))};
}

void mustBeReachable(const Control& control) {
    if (control.form() != nullptr && !control.form()->visible())
        throw ScriptError{control.name() + " is on a hidden window"};
    if (!control.shown()) throw ScriptError{control.name() + " is hidden"};
    if (!control.reachable()) throw ScriptError{control.name() + " is disabled"};
}

template <class Kind>
Kind& reachable(std::string_view& rest) {
    Kind& control = mustBe<Kind>(named(takeWord(rest)));
    mustBeReachable(control);
    return control;
}

Form& mainForm() {
    if (loadedForms().empty()) throw ScriptError{"no window is there"};
    Form* form = findForm("frmMain");
    return form != nullptr ? *form : *loadedForms().front();
}

void click(std::string_view rest, Transcript&) {
    Control& control = named(takeWord(rest));
    mustBeReachable(control);
    if (!as<CheckBox>(&control) && !as<OptionButton>(&control)) mustBe<Button>(control);
    control.userClick();
}

void check(std::string_view rest, Transcript&) {
    auto& box = reachable<CheckBox>(rest);
    if (rest != "0" && rest != "1") throw ScriptError{"write 0 or 1"};
    if (box.value() != (rest == "1" ? 1 : 0)) box.userClick();
}

void text(std::string_view rest, Transcript&) {
    Control& control = named(takeWord(rest));
    mustBeReachable(control);
    if (auto* combo = as<ComboBox>(&control)) return combo->userText(rest);
    auto& box = mustBe<TextBox>(control);
    if (box.locked()) throw ScriptError{box.name() + " is locked"};
    box.userText(unescaped(rest));
}

void choose(std::string_view rest, Transcript&) {
    auto& box = reachable<ComboBox>(rest);
    for (int i = 0; i < box.count(); ++i) {
        if (box.item(i) == rest) return box.userChoose(i);
    }
    throw ScriptError{box.name() + " has no entry '" + std::string(rest) + "'"};
}

void select(std::string_view rest, Transcript&) {
    auto& list = reachable<ListView>(rest);
    const std::vector<int> rows = toRows(rest, list.count());
    if (rows.size() > 1 && !list.multiSelect()) throw ScriptError{list.name() + " takes one row only"};
    list.userSelect(rows);
}

void column(std::string_view rest, Transcript&) {
    auto& list = reachable<ListView>(rest);
    const int number = toNumber(rest);
    const auto& columns = list.columns();
    if (number < 1 || number > static_cast<int>(columns.size())) throw ScriptError{"no such column"};
    if (columns[static_cast<std::size_t>(number - 1)].width == 0) throw ScriptError{"the column is hidden"};
    list.userColumnClick(number);
}

void key(std::string_view rest, Transcript&) {
    const std::string_view name = takeWord(rest);
    const auto press = keyByName(rest);
    if (!press) throw ScriptError{"unknown key '" + std::string(rest) + "'"};
    Form* form = findForm(name);
    if (form == nullptr) {
        Control& control = named(name);
        mustBeReachable(control);
        form = control.form();
        form->userFocus(&control);
        const bool plain = !press->alt && !press->shift;
        auto* list = as<ListView>(&control);
        const bool ofForm = press->key == VK_TAB || press->key == VK_ESCAPE || press->key == VK_APPS;
        if (list && plain && !ofForm) return list->userKeyDown(press->key);
    }
    form->userKey(press->key, press->shift, press->alt);
}

void doubleclick(std::string_view rest, Transcript&) {
    auto& list = reachable<ListView>(rest);
    const std::vector<int> rows = toRows(rest, list.count());
    if (rows.size() != 1) throw ScriptError{"name one row"};
    list.userSelect(rows);
    list.userDoubleClick();
}

void mouseup(std::string_view rest, Transcript&) {
    auto& list = reachable<ListView>(rest);
    constexpr std::array<std::pair<std::string_view, int>, 3> kButtons{
        {{"left", 1}, {"right", 2}, {"middle", 4}}};
    for (const auto& [name, number] : kButtons) {
        if (rest == name) return list.userMouseUp(number);
    }
    throw ScriptError{"write left, right or middle"};
}

void menu(std::string_view rest, Transcript&) {
    auto& item = mustBe<MenuItem>(named(takeWord(rest)));
    if (!item.enabled()) throw ScriptError{item.name() + " is disabled"};
    if (!item.visible()) throw ScriptError{item.name() + " is hidden"};
    item.userChoose();
}

void nav(std::string_view rest, Transcript&) {
    for (Control* control : mainForm().controls()) {
        auto* bar = as<ListBar>(control);
        if (!bar) continue;
        mustBeReachable(*bar);
        if (bar->userItemClick(rest)) return;
    }
    throw ScriptError{"the navigation bar has no icon '" + std::string(rest) + "'"};
}

// The icon reports the mouse message's number as the X coordinate of a mouse move, in pixels.
void tray(std::string_view rest, Transcript&) {
    constexpr std::array<std::pair<std::string_view, int>, 3> kMessages{
        {{"left", WM_LBUTTONUP}, {"right", WM_RBUTTONUP}, {"double", WM_LBUTTONDBLCLK}}};
    for (const auto& [name, message] : kMessages) {
        if (rest == name) return mainForm().userMouseMove(static_cast<float>(message * twipsPerPixel()), 0);
    }
    throw ScriptError{"write left, right or double"};
}

void answer(std::string_view rest, Transcript&) {
    const auto id = buttonByName(rest);
    if (!id) throw ScriptError{"unknown button '" + std::string(rest) + "'"};
    machine().answers.push_back(*id);
}

void browse(std::string_view rest, Transcript&) {
    machine().folders.emplace_back(rest);
}

void save(std::string_view rest, Transcript&) {
    machine().savePaths.emplace_back(rest);
}

void resize(std::string_view rest, Transcript&) {
    Form& form = mainForm();
    const int width = toNumber(takeWord(rest));
    const int height = toNumber(rest);
    if (width < 0 || height < 0) throw ScriptError{"a size is not negative"};
    if (form.windowState() != WindowState::Normal) throw ScriptError{"the window is not in its normal state"};
    if (form.borderStyle() != BorderStyle::Sizable) throw ScriptError{"the window cannot be resized"};
    form.setPlace({form.left(), form.top(), width, height});
}

void wait(std::string_view rest, Transcript&) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), seconds);
    if (error != std::errc() || end != rest.data() + rest.size() || seconds < 0)
        throw ScriptError{"write a number of seconds"};
    constexpr unsigned kStep = 10;
    for (double passed = 0; passed < seconds * 1000; passed += kStep) {
        WaitForEvents(kStep);
        DoEvents();
    }
}

void print(std::string_view rest, Transcript& transcript) {
    transcript.line(valueText(named(takeWord(rest))));
}

void rows(std::string_view rest, Transcript& transcript) {
    printRows(mustBe<ListView>(named(takeWord(rest))), transcript);
}

void window(std::string_view, Transcript& transcript) {
    for (Form* form : loadedForms()) {
        if (form->visible()) printWindow(*form, transcript);
    }
}

void close(std::string_view rest, Transcript&) {
    Form* form = rest.empty() ? &mainForm() : findForm(rest);
    if (form == nullptr || !form->visible()) throw ScriptError{std::string(rest) + " is not there"};
    if (form->borderStyle() == BorderStyle::FixedNoControls)
        throw ScriptError{form->name() + " has no close box"};
    form->userClose();
}

struct ActionRow {
    std::string_view word;
    void (*run)(std::string_view rest, Transcript& transcript);
};

constexpr std::array kActions{
    ActionRow{"click", click},     ActionRow{"check", check},
    ActionRow{"text", text},       ActionRow{"choose", choose},
    ActionRow{"select", select},   ActionRow{"column", column},
    ActionRow{"key", key},         ActionRow{"doubleclick", doubleclick},
    ActionRow{"mouseup", mouseup}, ActionRow{"menu", menu},
    ActionRow{"nav", nav},         ActionRow{"tray", tray},
    ActionRow{"answer", answer},   ActionRow{"browse", browse},
    ActionRow{"save", save},       ActionRow{"resize", resize},
    ActionRow{"wait", wait},       ActionRow{"print", print},
    ActionRow{"rows", rows},       ActionRow{"window", window},
    ActionRow{"close", close},
};

}  // namespace

void doAction(std::string_view word, std::string_view rest, Transcript& transcript) {
    for (const ActionRow& action : kActions) {
        if (action.word == word) return action.run(rest, transcript);
    }
    throw ScriptError{"unknown action '" + std::string(word) + "'"};
}

}  // namespace bromvale::offline
