#include "core/startup/main.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "cleanup/emptying.h"
#include "core/machine_facts.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "core/startup/arguments.h"
#include "core/startup/check_libs.h"
#include "core/startup/first_run.h"
#include "core/startup/first_start.h"
#include "core/state.h"
#include "core/text_file.h"
#include "core/version.h"
#include "platform/events.h"
#include "platform/exact/machine.h"
#include "platform/exact/registry.h"
#include "platform/exact/text.h"
#include "platform/machine.h"
#include "platform/rights.h"
#include "platform/shell.h"
#include "repair/backup_area.h"
#include "ui/frm_error.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

constexpr Tags kTags{"modMain", "Main"};
constexpr const char* kTitle = "Bromvale";

// Asking for the form itself would load it first.
void unloadForm(std::string_view name) {
    if (Form* form = loadedForm(name)) form->unload();
}

// --- the module-level state, a step each ---

void nameProgram() {
    AppTitle = kTitle;
    AppVersion = std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
                 std::to_string(kVersionRevision);
    AppTarget = "für Windows 98/ME und NT4";
}

void findProgramFolder() {
    AppPath = withBackslash(programFile().folder);
    setHelpFolder(AppPath);
}

// Read before all other settings, so that their reading can be traced already.
void readTraceSwitch() {
    const std::string text = FindValue(kHiveCurrentUser, "Software\\" + AppTitle, settingName(Protokoll));
    Protokoll = text.empty() ? std::int16_t{0} : toInt16(text);
    if (Protokoll == 1) LogAlways = true;
    kTags.trace([] { return "Protokollierung=" + std::to_string(Protokoll); });
}

void readSettings() {
    ReadAppSwitch();
    kTags.trace(AppPath);
}

void nameBackupFolder() {
    BackupPath = AppPath + "Backup\\";
    kTags.trace(BackupPath);
}

template <std::string& Name, std::string (*read)()>
void readName() {
    Name = read();
    kTags.trace(Name);
}

template <std::string& Folder, std::string (*read)()>
void readFolder() {
    Folder = withBackslash(read());
    kTags.trace([] { return plainText(Folder); });
}

void nameAgentFolders() {
    AgentDir = WinDir + "msagent\\";
    AgentCharsDir = WinDir + "msagent\\chars\\";
    kTags.trace(AgentDir);
}

constexpr const char* kVersionKey = "Software\\Microsoft\\Windows\\CurrentVersion";
constexpr const char* kProgramFilesDir = "ProgramFilesDir";

// The folder with its marks, where it is another one than its ANSI text says.
std::string exactProgramsFolder(const std::string& ansi) {
    std::string folder;
    HKEY key = nullptr;
    if (openExactKey(HKEY_LOCAL_MACHINE, kVersionKey, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) return ansi;
    const bool read = queryExactText(key, kProgramFilesDir, folder) == ERROR_SUCCESS;
    static_cast<void>(RegCloseKey(key));
    return read && !isExact(folder) ? folder : ansi;
}

std::string programsFolder() {
    const RegistryValue value = ReadValue(kHiveLocalMachine, kVersionKey, kProgramFilesDir);
    const std::string* folder = std::get_if<std::string>(&value);
    return folder != nullptr ? exactProgramsFolder(*folder) : std::string();
}

// The start record comes before the program's folder is known, so it lands in the current directory.
constexpr std::array kFirstSteps{nameProgram, WriteLogStart, findProgramFolder};

constexpr std::array kStateSteps{
    readTraceSwitch,
    readSettings,
    nameBackupFolder,
    readName<ComputerName, ReadComputerName>,
    readName<UserName, ReadUserName>,
    readFolder<WinDir, ReadWinDir>,
    nameAgentFolders,
    readFolder<SysDir, ReadSysDir>,
    readFolder<TmpDir, ReadTmpDir>,
    readFolder<ProgramFilesDir, programsFolder>,
    OS,
};

// --- refusal and checks ---

// A backslash may be the second half of a character there: keys and files would be cut in the wrong places.
void refuseCodePage() {
    MsgBox(
        AppTitle +
            " kann auf diesem System nicht arbeiten: Seine Schriftzeichen bestehen aus mehreren Bytes, und "
            "die Namen von Schlüsseln und Dateien wären nicht sicher zu lesen.",
        kStyleExclamation);
}

// Log, undo files and folder list would go nowhere, or into a folder of nearly the same name: nothing that is
// removed could come back.
void refuseFolder() {
    MsgBox(
        "Der Name des Ordners, in dem " + AppTitle +
            " liegt, enthält Zeichen, die das Programm auf diesem System nicht verwenden kann:\r\n" +
            plainText(AppPath) +
            "\r\n\r\nDas Protokoll und die Sicherungsdateien könnten dort nicht angelegt werden. Verschieben "
            "Sie das Programm in einen anderen Ordner und starten Sie es erneut.",
        kStyleExclamation);
}

void refuse() {
    MsgBox(OSName + " wird nicht unterstützt.", kStyleInformation);
}

void traceSystem() {
    kTags.trace([] { return OSName + " Build: " + OSBuild; });
}

// --- the emptying road ---

void openFolderList(int number) {
    openFile(AppPath + "liste.txt", FileMode::Input, number);
    // The backslash that stands twice is as old as the program.
    kTags.trace([] { return "Tempfiledelete: " + AppPath + "\\liste.txt geöffnet"; });
}

// Nobody sits before a start of this kind, so the log tells it, tracing or not.
void logRefused(const RefusedFolder& folder) {
    const std::string text = "Tempfiledelete: " + plainText(folder.path) + " wird nicht geleert. ";
    ErrHandle(kTags.modul, kTags.funktion, text + folder.reason, 0, "", kStyleExclamation, kHide);
}

void emptyFolders(int number) {
    emptyListedFolders(number, logRefused);
    kTags.trace("Tempfiledelete: Dateien und Ordner gelöscht");
}

void endEmptying(int number) {
    closeFile(number);
    kTags.trace("Tempfiledelete endet");
    unloadForm("frmLogin");
}

// --- the normal road ---

void runFirstRunAction() {
    if (FirstRun == 1) CheckFirstRun();
}

void deleteOldUndoFiles() {
    if (AutoRegFileDel == 1) AutoFileDel();
}

void tellThatTracingIsOn() {
    if (Protokoll == 1) MsgBox("Die Protokollierung ist aktiviert.", kStyleInformation);
}

void showMainWindow() {
    frmMain().showBehindErrorDialog();
}

// Log, undo files and folder list lie in there. A scan needs none of them.
void tellThatFolderIsClosed() {
    if (takesFiles(AppPath)) return;
    MsgBox("In den Ordner des Programms kann nicht geschrieben werden:\r\n" + AppPath +
               "\r\n\r\nDas Protokoll, die Sicherungsdateien und die Ordnerliste können dort nicht angelegt "
               "werden. Sie können die Registry durchsuchen, aber nichts daraus entfernen. Starten Sie das "
               "Programm mit den nötigen Rechten oder aus einem Ordner, in den Sie schreiben dürfen.",
           kStyleInformation);
}

constexpr std::array kNormalRoad{runFirstRunAction, deleteOldUndoFiles, tellThatTracingIsOn,
                                 tellThatFolderIsClosed, showMainWindow};

// --- failures ---

// Where none can be made there is nothing to empty, and nobody to be told.
Ending makeFolderList(const Failure& failure, int number) {
    if (!takesFiles(AppPath)) return Ending::Leave;
    const std::string path = AppPath + "liste.txt";
    const Ending again =
        Report{Ending::Retry, kStyleExclamation, kHide, path + " musste angelegt werden."}(kTags, failure);
    openFile(path, FileMode::Output, number);
    closeFile(number);
    return again;
}

void tellThatMemoryIsShort() {
    MsgBox(
        "Es ist mehr Speicher erforderlich, als verfügbar ist.\r"
        "Es sind zu viele Anwendungen, Dokumente oder Quelldateien geöffnet.\r"
        "Schließen Sie alle geöffneten Anwendungen, Dokumente oder Quelldateien, die Sie nicht benötigen.\r"
        "Starten Sie ggf. den Rechner neu.",
        kStyleStop);
    unloadForm("frmMain");
}

// `number` is the file number of liste.txt, whose open is the one statement that fails with 52 or 53: a
// missing list is made, and gives an empty run. After any other failure the error dialog is what stays on the
// screen.
Ending onFailureOfMain(const Failure& failure, int number) {
    if (failure.number == Failure::kFileNotFound || failure.number == Failure::kBadFileName)
        return makeFolderList(failure, number);
    if (failure.number == Failure::kNoMemory) tellThatMemoryIsShort();
    return Report{Ending::Leave, kStyleStop, kShow}(kTags, failure);
}

// A failure that no routine below an event has caught.
void showUnhandledFailure(const Failure& failure) {
    MsgBox("Laufzeitfehler '" + std::to_string(failure.number) + "':\r\n\r\n" + failure.description,
           kStyleStop);
}

// The waiting window can't be closed by hand, and the window that menus open from is never seen: without the
// main window, which ends the process, they would keep it and with it every later start for good. What may be
// left is the error dialog.
void closeUnseenWindows() {
    unloadForm("frmLogin");
    if (loadedForm("frmMain") == nullptr) unloadForm("frmPopUp");
}

}  // namespace

void Main() {
    int number = 1;
    const Routine routine{
        kTags, [&](const Tags&, const Failure& failure) { return onFailureOfMain(failure, number); }};
    const auto all = [&](const auto& steps) {
        return std::ranges::all_of(steps, [&](auto statement) { return routine.step(statement); });
    };

    {
        const RightsQuestion question;
        if (question.handedOver() || previousInstanceRuns()) return;
    }
    if (!all(kFirstSteps)) return;
    if (!textsCanBeTold()) {
        routine.step(refuseCodePage);
        return;
    }
    if (!isExact(AppPath)) {
        routine.step(refuseFolder);
        return;
    }
    if (!all(kStateSteps)) return;
    if (OSName == "Windows 95") {
        routine.step(refuse);
        return;
    }
    if (!routine.step(traceSystem) || !routine.step(CheckLibs)) return;
    if (!emptiesFolders()) {
        all(kNormalRoad);
        return;
    }
    static_cast<void>(routine.step([&] {
        kTags.trace("Tempfiledelete startet");
        number = freeFile();
    }) && routine.step(showEmptyingWindow) &&
                      routine.step([&] { openFolderList(number); }) &&
                      routine.step([&] { emptyFolders(number); }) &&
                      routine.step([&] { endEmptying(number); }));
}

void runProgram() {
    registerErrorDialog();
    setUnhandledFailure(showUnhandledFailure);
    dispatchUserEvent(Main);
    closeUnseenWindows();
    RunEventLoop();
}

}  // namespace bromvale
