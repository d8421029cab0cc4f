// Undo files, which escape nothing: what the registry editor makes of one, and that a row whose texts need no
// escaping comes back as it was.
#include "repair/undo_file.h"
#include "platform/offline/files/other_half.h"

#include "platform/offline/reg_files/reg_file.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

using offline::OtherHalf;
using offline::Registry;

bool isPlain(std::string_view text) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < ' ' || c == '"' || c == '\\') return false;
    }
    return true;
}

std::string fileOf(std::string_view records) {
    std::string file;
    for (const std::string& line :
         undoHeaderLines({"REGEDIT4\r\n\r\n", "Bromvale", "1.1.0", "Sonntag, 15. Nov 2026 - 07:12:09",
                          "Benutzer", "RECHNER", "Windows XP"}))
        file.append(line).append("\r\n");
    return file.append(records);
}

// A row: the key below its hive, the value's name and its text, a line each.
void run(std::string_view input) {
    const OtherHalf half;
    Registry any(half);
    mergeRegText(fileOf(input), any);

    Pieces pieces(input);
    const std::string key(pieces.until("\n"));
    const std::string name(pieces.until("\n"));
    const std::string text(pieces.rest());
    Registry registry(half);
    mergeRegText(fileOf(undoRecord("[HKEY_LOCAL_MACHINE\\" + key + "]", "\"" + name + "\"", text)), registry);
    const bool sound = isPlain(key) && isPlain(name) && isPlain(text) && !key.empty() &&
                       key.size() <= offline::kLongestKeyName && name.size() <= offline::kLongestValueName;
    if (!sound) return;
    const auto value = registry.value("HKEY_LOCAL_MACHINE\\" + key, name);
    require(value && value->type == 1 && value->data == text + '\0', "the row has come back");
}

std::vector<std::string> seeds() {
    return {"Software\nn\nein Text", "a]b\n\n", "[x\n=\n=\xE4", "A\\B\nn\nC:\\x\\y",
            "Software\nn\nx\"\r\n[-HKEY_LOCAL_MACHINE\\Software]\r\n"};
}

const KnownTarget kTarget({"undo_file", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
