// liste.txt on its page: its rows are its lines, and the removal of a row leaves the others' lines. A path
// that is not refused is a whole one.
#include <algorithm>

#include "cleanup/folder_paths.h"
#include "core/text_file.h"
#include "tests/fuzz/program.h"
#include "tests/fuzz/target.h"
#include "ui/frm_main.h"

namespace bromvale::fuzz {
namespace {

using Lines = std::vector<std::string>;

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        if (end > 0) lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(text.size(), end + 1));
    }
    return lines;
}

std::string fileOf(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text.append(text.empty() ? "" : "\r\n").append(line);
    return text + "\r\n";
}

Lines rows() {
    Lines texts;
    const ListView& list = frmMain().cleanup.lvwOrdnerList;
    for (int row = 1; row <= list.count(); ++row) texts.push_back(list.item(row).text());
    return texts;
}

void requireWholePath(std::string_view path) {
    if (!refusalOf(path).empty()) return;
    const bool drive = path.size() >= 3 && path.substr(1, 2) == ":\\";
    require(drive || path.starts_with("\\\\"), "a drive or a share");
    require(path.find_first_of("/*?<>|\"") == std::string_view::npos, "no sign that Windows reads otherwise");
    require(path.find("\\..\\") == std::string_view::npos && !path.ends_with("\\.."), "nothing leads upward");
    require(std::ranges::none_of(path, [](char c) { return static_cast<unsigned char>(c) < ' '; }),
            "no control character");
}

void run(std::string_view input) {
    Pieces pieces(input);
    const std::size_t choice = pieces.byte();
    offline::Machine& machine = freshMachine();
    const std::string_view path = "C:\\Programme\\Bromvale\\liste.txt";
    machine.drives.writeFile(path, pieces.rest());
    CleanupPage& page = frmMain().cleanup;
    frmMain().showPage(page);
    page.Ordnerliste_laden();
    Lines lines = linesOf(pieces.rest());
    require(rows() == lines, "each line but the empty ones is a row");
    require(page.chbTempFilesDel.enabled() == !lines.empty(), "there is something to be emptied");
    for (const std::string& line : lines) requireWholePath(line);
    if (lines.empty()) return;
    const std::string removed = lines[choice % lines.size()];
    page.lvwOrdnerList.userSelect({static_cast<int>(choice % lines.size()) + 1});
    page.cmdOrdnerLöschen_Click();
    std::erase(lines, removed);
    require(machine.drives.readFile(path) == fileOf(lines), "the file has the other lines");
    require(rows() == lines, "and so has the page");
    require(openFileCount() == 0, "no file is left open");
}

std::vector<std::string> seeds() {
    return {std::string(1, '\0') + "C:\\Müll\r\n\r\nD:\\Rest\\\r\n",
            "\1C:\\a\nC:\\a\n\\\\server\\share\\x\rC:\\..\\b",
            "\2C:\\con\r\n..\r\nC:\\a\\..\\b\r\nC:\\x \r\n", "\1"};
}

const KnownTarget kTarget({"folder_list", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
