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

// A complete copy is written in UTF-16LE, the records behind its head without a mark.
std::string writtenText(const std::string& bytes) {
    const bool marked = bytes.starts_with("\xFF\xFE");
    const bool wide = bytes.size() % 2 == 0 && (marked || (bytes.size() > 1 && bytes[1] == '\0'));
    return wide ? ansiFromUtf16Bytes(std::string_view(bytes).substr(marked ? 2 : 0)) : bytes;
}

// In a line %t stands for the event's text, %c for its caption, %n for its number, %w for what was written,
// and of a message box %k for its kind and %a for its answer.
struct Wording {
    EventKind kind;
    std::string_view line;
    std::string_view withoutCaption{};  // where that is told otherwise
};

constexpr std::array kWordings{
    Wording{EventKind::MessageBox, "box %k \"%c\": %t -> %a"},
    Wording{EventKind::ShellExecute, "shell %c: %t"},
    Wording{EventKind::Run, "run: %t"},
    Wording{EventKind::Restart, "restart: flags %n"},
    Wording{EventKind::Privilege, "privilege: %t"},
    Wording{EventKind::TrayAdd, "tray icon added: %t"},
    Wording{EventKind::TrayModify, "tray icon changed: %t"},
    Wording{EventKind::TrayDelete, "tray icon removed: %t"},
    Wording{EventKind::Foreground, "window to the front"},
    Wording{EventKind::Help, "help: command %n \"%t\""},
    Wording{EventKind::Menu, "menu: %t (default %c)", "menu: %t"},
    Wording{EventKind::FileMade, "empty file: %t", "make file: %t"},
    Wording{EventKind::FileWritten, "write %t: %w"},
    Wording{EventKind::FileDeleted, "recycle file: %t", "delete file: %t"},
    Wording{EventKind::FileMoved, "move file: %c -> %t"},
    Wording{EventKind::FolderMade, "make folder: %t"},
    Wording{EventKind::FolderDeleted, "recycle folder: %t", "delete folder: %t"},
    Wording{EventKind::KeyMade, "make key: %t"},
    Wording{EventKind::KeyDeleted, "delete key: %t"},
    Wording{EventKind::ValueSet, "set value: %t: %c"},
    Wording{EventKind::ValueDeleted, "delete value: %t: %c"},
    Wording{EventKind::Library, "call %c of %t"},
    Wording{EventKind::Fetch, "fetch: %t"},
    Wording{EventKind::Download, "download: %t"},
    Wording{EventKind::SaveDialog, "save dialog: %t -> %c", "save dialog: %t -> cancelled"},
    Wording{EventKind::Connect, "connect: %t"},
    Wording{EventKind::Browse, "folder dialog: %t -> %c", "folder dialog: %t -> cancelled"},
    Wording{EventKind::End, "end: exit code %n"},
};

std::string partOf(const Event& event, char sign) {
    switch (sign) {
        case 't': return event.text;
        case 'c': return event.caption;
        case 'n': return std::to_string(event.number);
        case 'w': return writtenText(event.caption);
        case 'k': return boxKind(event.number);
        default: return std::string(buttonName(event.answer));
    }
}

std::string lineOf(const Wording& wording, const Event& event) {
    const bool otherwise = event.caption.empty() && !wording.withoutCaption.empty();
    const std::string_view pattern = otherwise ? wording.withoutCaption : wording.line;
    std::string line;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%') {
            line += partOf(event, pattern[++i]);
        } else {
            line += pattern[i];
        }
    }
    return line;
}

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
        line("window " + form->name() + " shown: \"" + form->caption() + "\"");
    }
}

void Transcript::event(const Event& each) {
    lookAtWindows();
    for (const Wording& wording : kWordings) {
        if (wording.kind == each.kind) line(lineOf(wording, each));
    }
    // A message box is there to be seen at once, also when the program never comes back.
    if (each.kind == EventKind::MessageBox || each.kind == EventKind::End) flush();
}

void Transcript::flush() {
    std::fflush(stdout);
}

}  // namespace bromvale::offline
