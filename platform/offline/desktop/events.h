#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace bromvale::offline {

// What leaves the program: everything that it shows, asks, starts or writes, in order.
enum class EventKind {
    MessageBox,    // text, caption, number = style, answer = button
    ShellExecute,  // text = file, caption = verb, number = show command
    Run,           // text = command line
    Restart,       // number = flags of ExitWindowsEx, answer = its reason
    Privilege,     // text = privilege that was switched on
    TrayAdd,       // text = tool-tip, number = callback message
    TrayModify,
    TrayDelete,
    Foreground,  // a window was brought to the front
    Help,        // text = file, number = command
    Menu,  // text = captions joined by " | ", caption = default entry, answer = 1 when an entry was chosen
    FileMade,       // text = path; an empty file, caption = "geleert" where there was one before
    FileWritten,    // text = path, caption = bytes
    FileDeleted,    // text = path; caption = "Papierkorb" where it went into the recycle bin
    FileMoved,      // text = new path, caption = old path
    FolderMade,     // text = path
    FolderDeleted,  // text = path; caption as above
    KeyMade,        // text = key
    KeyDeleted,     // text = key
    ValueSet,       // text = key, caption = name and data as a registry file writes them
    ValueDeleted,   // text = key, caption = name
    Library,        // text = library, caption = entry that was called
    Browse,         // text = title, caption = chosen folder
    Fetch,          // text = address
    Download,       // text = address; the system's download dialog was asked for it
    SaveDialog,     // text = suggested name, caption = chosen file
    Connect,        // text = host:port
    End,            // number = exit code
};

struct Event {
    EventKind kind;
    std::string text{};
    std::string caption{};
    std::uint32_t number = 0;
    int answer = 0;
};

class Events {
  public:
    // Told of each event as it happens; the list keeps them as well while `keep` is on.
    std::function<void(const Event&)> sink;
    bool keep = true;

    void record(Event event) {
        if (sink) sink(event);
        if (keep) all_.push_back(std::move(event));
    }
    [[nodiscard]] const std::vector<Event>& all() const { return all_; }
    [[nodiscard]] std::vector<Event> of(EventKind kind) const {
        std::vector<Event> found = all_;
        std::erase_if(found, [kind](const Event& event) { return event.kind != kind; });
        return found;
    }
    [[nodiscard]] std::size_t count(EventKind kind) const { return of(kind).size(); }
    void clear() { all_.clear(); }

  private:
    std::vector<Event> all_;
};

}  // namespace bromvale::offline
