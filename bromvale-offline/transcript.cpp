#include "bromvale-offline/transcript.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "bromvale-offline/words.h"
#include "platform/controls/form.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {
namespace {

std::string quoted(std::string_view text) {
    std::string result(1, '"');
    result.append(text).push_back('"');
    return result;
}

std::string boxLine(const Event& event) {
    return "box " + boxKind(event.number) + " " + quoted(event.caption) + ": " + event.text + " -> " +
           std::string(buttonName(event.answer));
}

std::string fileVerb(const Event& event) {
    return event.caption.empty() ? "delete " : "recycle ";
}

// A complete copy is written in UTF-16LE, the records behind its head without a mark.
std::string writtenText(const std::string& bytes) {
    const bool marked = bytes.starts_with("\xFF\xFE");
    const bool wide = bytes.size() % 2 == 0 && (marked || (bytes.size() > 1 && bytes[1] == '\0'));
    return wide ? ansiFromUtf16Bytes(std::string_view(bytes).substr(marked ? 2 : 0)) : bytes;
}

struct Wording {
    EventKind kind;
    std::string (*line)(const Event&);
};

constexpr std::array kWordings{
    Wording{EventKind::MessageBox, boxLine},
    Wording{EventKind::ShellExecute, [](const Event& e) { return "shell " + e.caption + ": " + e.text; }},
    Wording{EventKind::Run, [](const Event& e) { return "run: " + e.text; }},
    Wording{EventKind::Restart, [](const Event& e) { return "restart: flags " + std::to_string(e.number); }},
    Wording{EventKind::Privilege, [](const Event& e) { return "privilege: " + e.text; }},
    Wording{EventKind::TrayAdd, [](const Event& e) { return "tray icon added: " + e.text; }},
    Wording{EventKind::TrayModify, [](const Event& e) { return "tray icon changed: " + e.text; }},
    Wording{EventKind::TrayDelete, [](const Event& e) { return "tray icon removed: " + e.text; }},
    Wording{EventKind::Foreground, [](const Event&) { return std::string("window to the front"); }},
    Wording{
        EventKind::Help,
        [](const Event& e) { return "help: command " + std::to_string(e.number) + " " + quoted(e.text); }},
    Wording{EventKind::Menu,
            [](const Event& e) {
                return "menu: " + e.text + (e.caption.empty() ? "" : " (default " + e.caption + ")");
            }},
    Wording{EventKind::FileMade,
            [](const Event& e) { return (e.caption.empty() ? "make file: " : "empty file: ") + e.text; }},
    Wording{EventKind::FileWritten,
            [](const Event& e) { return "write " + e.text + ": " + writtenText(e.caption); }},
    Wording{EventKind::FileDeleted, [](const Event& e) { return fileVerb(e) + "file: " + e.text; }},
    Wording{EventKind::FileMoved, [](const Event& e) { return "move file: " + e.caption + " -> " + e.text; }},
    Wording{EventKind::FolderMade, [](const Event& e) { return "make folder: " + e.text; }},
    Wording{EventKind::FolderDeleted, [](const Event& e) { return fileVerb(e) + "folder: " + e.text; }},
    Wording{EventKind::KeyMade, [](const Event& e) { return "make key: " + e.text; }},
    Wording{EventKind::KeyDeleted, [](const Event& e) { return "delete key: " + e.text; }},
    Wording{EventKind::ValueSet, [](const Event& e) { return "set value: " + e.text + ": " + e.caption; }},
    Wording{EventKind::ValueDeleted,
            [](const Event& e) { return "delete value: " + e.text + ": " + e.caption; }},
    Wording{EventKind::Library, [](const Event& e) { return "call " + e.caption + " of " + e.text; }},
    Wording{EventKind::Fetch, [](const Event& e) { return "fetch: " + e.text; }},
    Wording{EventKind::Download, [](const Event& e) { return "download: " + e.text; }},
    Wording{EventKind::SaveDialog,
            [](const Event& e) {
                return "save dialog: " + e.text + " -> " + (e.caption.empty() ? "cancelled" : e.caption);
            }},
    Wording{EventKind::Connect, [](const Event& e) { return "connect: " + e.text; }},
    Wording{EventKind::Browse,
            [](const Event& e) {
                return "folder dialog: " + e.text + " -> " + (e.caption.empty() ? "cancelled" : e.caption);
            }},
    Wording{EventKind::End, [](const Event& e) { return "end: exit code " + std::to_string(e.number); }},
};

}  // namespace

std::string oneLine(std::string_view text) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == '\n') {
            result += "\\n";
        } else if (byte == '\r') {
            const bool lineEnd = i + 1 < text.size() && text[i + 1] == '\n';
            if (!lineEnd) result += "\\r";
        } else if (byte < 0x20 && byte != '\t') {
            result += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        } else {
            result += text[i];
        }
    }
    return result;
}

void Transcript::attach() {
    machine().events.sink = [this](const Event& each) { event(each); };
    machine().events.keep = false;
}

void Transcript::line(std::string_view text) {
    const std::string bytes = utf8FromAnsi(oneLine(text)) + "\n";
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

void Transcript::lookAtWindows() {
    const std::vector<Form*>& loaded = loadedForms();
    const auto isShown = [&loaded](const Form* form) {
        return std::find(loaded.begin(), loaded.end(), form) != loaded.end() && form->visible();
    };
    for (std::size_t i = 0; i < shown_.size();) {
        if (isShown(shown_[i])) {
            ++i;
            continue;
        }
        line("window " + names_[i] + " gone");
        shown_.erase(shown_.begin() + static_cast<std::ptrdiff_t>(i));
        names_.erase(names_.begin() + static_cast<std::ptrdiff_t>(i));
    }
    for (Form* form : loaded) {
        if (!form->visible() || std::find(shown_.begin(), shown_.end(), form) != shown_.end()) continue;
        shown_.push_back(form);
        names_.push_back(form->name());
        line("window " + form->name() + " shown: " + quoted(form->caption()));
    }
}

void Transcript::event(const Event& each) {
    lookAtWindows();
    for (const Wording& wording : kWordings) {
        if (wording.kind == each.kind) line(wording.line(each));
    }
    // A message box is there to be seen at once, also when the program never comes back.
    if (each.kind == EventKind::MessageBox || each.kind == EventKind::End) flush();
}

void Transcript::flush() {
    std::fflush(stdout);
}

}  // namespace bromvale::offline
