#include "core/startup/check_libs.h"

#include <array>
#include <string>

#include "base/failure.h"
#include "core/file_helpers.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "core/state.h"
#include "core/time.h"
#include "platform/machine.h"
#include "ui/frm_login.h"
#include "ui/frm_popup.h"

namespace bromvale {
namespace {

constexpr std::int16_t kRegister = -1;
constexpr int kInternetIsMissing = 60008;

// A component without a class is only looked for as a file.
struct Component {
    const char* file;
    const char* classId;
    int number;  // of the failure that a missing file is
};
// In the order of the check; 60004 and 60005 belong to nobody.
constexpr std::array kComponents{
    Component{"SSubTmr6.dll", "{71A27032-C7D8-11D2-BEF8-525400DFB47A}", 60000},
    Component{"vbalLBar6.ocx", "{FE1D1F9D-EC4B-11D3-B06C-00500427A693}", 60001},
    Component{"vbalIml6.ocx", "{396F7AC9-A0DD-11D3-93EC-00C0DFE7442A}", 60002},
    Component{"hhctrl.ocx", "{4662DAB0-D393-11D0-9A56-00C04FB68B66}", 60003},
    Component{"mscomctl.ocx", "{1EFB6596-857C-11D1-B16A-00C0F0283628}", 60006},
    Component{"msvbvm60.dll", "{D5DE8D20-5BB8-11D1-A1E3-00A0C90F2731}", 60007},
    Component{"wininet.dll", nullptr, kInternetIsMissing},
    Component{"mswinsck.ocx", "{248DD896-BB45-11CF-9ABC-0080C7E7B78D}", 60009},
};

std::string missingText(const Component& component) {
    std::string text = "Die Datei ";
    text += component.file;
    text += component.classId == nullptr
                ? " wurde nicht gefunden. Es scheint, das kein Microsoft Internet Explorer installiert ist."
                : " wurde nicht gefunden. Deinstallieren Sie das Programm und installieren Sie es neu.";
    return text;
}

bool classIsKnown(const Component& component) {
    if (component.classId == nullptr) return false;
    const std::string key = std::string("Software\\Classes\\CLSID\\") + component.classId;
    // Where an installation for one user and the portable program register them is the user's own half.
    return KeyExist(kHiveLocalMachine, key, READ_CONTROL) != 0 ||
           KeyExist(kHiveCurrentUser, key, READ_CONTROL) != 0;
}

void check(const Component& component) {
    if (classIsKnown(component)) return;
    const std::string path = SysDir + component.file;
    if (!FileExists(path)) throw Failure{component.number, missingText(component)};
    if (component.classId == nullptr) return;
    RegisterServer(frmPopUp().window(), path, kRegister);
    Pause(1);
}

// The missing file is told as the report's description, since the dialog shows that and not the report's own
// text. The check goes on behind the dialog: ending the program is the user's choice.
Ending handle(const Tags& tags, const Failure& failure) {
    if (failure.number != kInternetIsMissing) return Report{Ending::Next, kStyleStop, kShow}(tags, failure);
    InternetMissing = true;
    return Report{Ending::Next, kStyleExclamation, kHide, failure.description}(tags, failure);
}

// Windows answers 0 where there is no entry, and not every version of it survives the question.
std::int32_t callEntry(FARPROC entry, HWND window) {
    if (entry == nullptr) return 0;
    // By way of a function without arguments, the one type that compilers let stand for any other.
    const auto procedure = reinterpret_cast<WNDPROC>(reinterpret_cast<void (*)()>(entry));
    return static_cast<std::int32_t>(CallWindowProcA(procedure, window, 0, 0, 0));
}

}  // namespace

void RegisterServer(HWND window, std::string_view Pfad, std::int16_t Registrieren) {
    const std::string path(Pfad);
    const Routine routine{{"modLibRegister", "RegisterServer"},
                          Report{Ending::Next, kStyleStop, kHide, path}};
    HMODULE library = nullptr;
    FARPROC entry = nullptr;
    routine.step([] { frmLogin().show(); });
    routine.step(
        [&] { frmLogin().lblLogin.setCaption("Die Komponente " + path + " wird nachregistriert."); });
    routine.step([&] { library = LoadLibraryA(path.c_str()); });
    routine.step([&] {
        entry = GetProcAddress(library, Registrieren != 0 ? "DllRegisterServer" : "DllUnregisterServer");
    });
    routine.step([&] { LastRegisterResult = callEntry(entry, window); });
    // Each registration leaves its line in the log, whatever came of it.
    Report{Ending::Next, kStyleExclamation, kHide, path}(routine, lastFailure());
    routine.step([&] { FreeLibrary(library); });
}

void CheckLibs() {
    constexpr Routine routine{{"modLibRegister", "CheckLibs"}, &handle};
    routine.started();
    for (const Component& component : kComponents) routine.step([&] { check(component); });
    if (Form* form = loadedForm("frmLogin")) form->unload();
    routine.ended();
}

}  // namespace bromvale
