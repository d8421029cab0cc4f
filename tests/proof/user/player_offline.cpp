#include "tests/proof/user/player.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "bromvale-offline/script.h"
#include "bromvale-offline/show.h"
#include "bromvale-offline/words.h"
#include "core/startup/main.h"
#include "platform/offline/machine.h"
#include "platform/screen.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

using offline::machine;

// So often may events be served in one run: whoever gets there goes round in circles.
constexpr int kMostServings = 300000;

struct EndlessRun {};

bool isPreparation(std::string_view action) {
    constexpr std::array<std::string_view, 5> kWords{"answer", "browse", "save", "at", "inbox"};
    const std::string_view word = action.substr(0, action.find(' '));
    return std::ranges::find(kWords, word) != kWords.end();
}

Form* mainWindow() {
    Form* form = loadedForm("frmMain");
    return form != nullptr && form->visible() ? form : nullptr;
}

void setState(std::string_view name) {
    Form* form = mainWindow();
    if (form == nullptr) throw offline::ScriptError{"no window is there"};
    form->setWindowState(name == "normal"      ? WindowState::Normal
                         : name == "minimised" ? WindowState::Minimised
                                               : WindowState::Maximised);
}

}  // namespace

Player::Player(Source source) : source_(std::move(source)) {
    machine().pump.observe([this](std::uint64_t) {
        if (++counts_.servings > kMostServings) throw EndlessRun{};
    });
    machine().pump.nextAction = [this] { return next(); };
}

Player::~Player() {
    machine().pump.nextAction = nullptr;
    machine().pump.observe(nullptr);
}

// What is to be done in the midst of the start stands first.
void Player::run() {
    try {
        std::optional<std::string> first = source_();
        for (; first && isPreparation(*first); first = source_()) perform(*first, false);
        if (first) {
            source_ = [first = std::exchange(first, std::nullopt), rest = source_]() mutable {
                return first ? std::exchange(first, std::nullopt) : rest();
            };
        }
        runProgram();
        lookAround();
        leave();
    } catch (const offline::ProcessEnded&) {
        return;
    } catch (const EndlessRun&) {
        wrong("events are served without end");
    }
}

bool Player::next() {
    if (!std::exchange(opened_, true)) lookAtPlace();
    lookAround();
    for (;;) {
        const std::optional<std::string> action = source_();
        if (!action) return false;
        perform(*action, false);
        if (isPreparation(*action)) continue;
        machine().answers.clear();
        machine().folders.clear();
        machine().savePaths.clear();
        return true;
    }
}

void Player::box() {
    for (const std::string& action : std::exchange(inBox_, {})) perform(action, true);
}

void Player::perform(std::string_view action, bool nested) {
    if (onAction) onAction((nested ? "  " : "") + std::string(action));
    try {
        dispatch(action);
        ++counts_.done;
        if (nested) ++counts_.nested;
    } catch (const offline::ScriptError&) {
        ++counts_.passedOver;
    }
    machine().menuChoices.clear();
}

void Player::dispatch(std::string_view action) {
    std::string_view rest = action;
    const std::string_view word = offline::takeWord(rest);
    if (word == "at") return later(rest);
    if (word == "inbox") return inBox_.emplace_back(rest), void();
    if (word == "with") {
        machine().menuChoices.emplace_back(offline::takeWord(rest));
        return dispatch(rest);
    }
    if (word == "state") return setState(rest);
    if (word == "taskbar") {
        if (Form* form = mainWindow()) form->userTaskbarCreated();
        return;
    }
    offline::doAction(word, rest, transcript_);
}

void Player::later(std::string_view rest) {
    const int serving = offline::toNumber(offline::takeWord(rest));
    if (serving < 1) throw offline::ScriptError{"events are served for the first time at 1"};
    machine().pump.at(static_cast<std::uint64_t>(serving), [this, action = std::string(rest)] {
        if (!leaving_) perform(action, true);
    });
}

// Whatever place was saved, the window's caption can be taken hold of.
void Player::lookAtPlace() {
    const Form* form = mainWindow();
    if (form == nullptr || form->windowState() == WindowState::Maximised) return;
    const Place& place = form->place();
    if (withCaptionIn(workingArea(place.left, place.top), place) != place)
        wrong("the window opens beyond the screen");
}

// Nothing is at work: what must hold between two actions.
void Player::lookAround() {
    for (const Form* form : loadedForms()) {
        if (form->visible() && form->borderStyle() == BorderStyle::FixedNoControls)
            wrong("a window that can't be closed stays: " + form->name());
    }
    if (const std::size_t files = machine().openFiles()) wrong("files are open: " + std::to_string(files));
    if (mainWindow() != nullptr) lookAtScan();
}

void Player::lookAtScan() {
    const FrmMain& form = frmMain();
    if (!form.scan.cmdStart.enabled()) wrong("the start button is disabled though no scan is under way");
    if (form.tmrTimer.enabled()) wrong("the progress goes on though nothing is at work");
    if (form.mousePointer() == MousePointer::Hourglass) wrong("the hourglass stays");
    if (form.height() <= 0 || form.width() <= 0) wrong("the window has no size");
}

// Every window can be left, a scan can be made, and the close box ends the program.
void Player::leave() {
    leaving_ = true;
    Form* const form = mainWindow();
    for (Form* each : std::vector<Form*>(loadedForms())) {
        if (each == form || !each->visible()) continue;
        each->userClose();
        if (each->visible()) wrong("can't be closed: " + each->name());
    }
    if (form == nullptr) return;
    try {
        for (const char* action : {"nav Registry Scan starten", "click cmdAbbrechen", "click cmdStart"})
            dispatch(action);
    } catch (const offline::ScriptError& error) {
        wrong("no scan can be made: " + error.text);
    }
    lookAround();
    form->userClose();
    wrong("the close box doesn't end the program");
}

void Player::wrong(const std::string& text) {
    if (wrongs_.size() < 12) wrongs_.push_back(text);
}

}  // namespace bromvale::proof
