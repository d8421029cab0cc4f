// The list of folders that are to be emptied: liste.txt and the page that shows it.
#include "core/attempt.h"
#include "core/log.h"
#include "core/text_file.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

constexpr Tags kTags{"modFiles", "Ordnerliste_laden"};
constexpr int kFolderIcon = 6;

// By its bare name, so in the current directory; adding a folder and emptying use the program's folder.
constexpr std::string_view kListFile = "liste.txt";

void readFolders(int number, ListView& list) {
    while (!endOfFile(number)) {
        const std::string line = readLine(number);
        if (!line.empty()) list.add(line, kFolderIcon);
    }
}

}  // namespace

void FrmMain::Ordnerliste_laden() {
    int number = 0;
    const auto onFailure = [&](const Failure& failure) {
        if (failure.number == 53) {
            openFile(kListFile, FileMode::Output, number);
            closeFile(number);
            return Ending::Retry;
        }
        ErrHandle(kTags.modul, kTags.funktion, "", failure.number, failure.description, kStyleExclamation,
                  kHide);
        return Ending::Leave;
    };
    const auto step = [&](auto&& statement) { return attempt(onFailure, statement); };
    static_cast<void>(step([&] {
                          number = freeFile();
                          lvwOrdnerList.clear();
                      }) &&
                      step([&] { openFile(kListFile, FileMode::Input, number); }) &&
                      step([&] { readFolders(number, lvwOrdnerList); }) && step([&] { closeFile(number); }) &&
                      step([&] {
                          const bool some = lvwOrdnerList.count() > 0;
                          if (!some) chbTempFilesDel.setValue(0);
                          chbTempFilesDel.setEnabled(some);
                      }));
}

}  // namespace bromvale
