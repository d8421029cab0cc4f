// A machine on which nothing is missing, for starts of the whole program; what the error dialog would show is
// kept.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "core/log.h"
#include "core/settings.h"
#include "core/startup/main.h"
#include "core/state.h"
#include "platform/controls/form.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {

using Lines = std::vector<std::string>;
using offline::machine;

inline constexpr const char* kCurrentVersion = "Software\\Microsoft\\Windows\\CurrentVersion";
inline constexpr const char* kStarted = "started; Bromvale; " BROMVALE_VERSION "; für Windows 98/ME und NT4";

class StartUpTest : public testing::TestMachine {
  protected:
    StartUpTest() {
        setString(HKEY_LOCAL_MACHINE, kCurrentVersion, "ProgramFilesDir", "C:\\Programme");
        makeComponents("C:\\WINDOWS\\SYSTEM32\\");
        machine().clock.set(2002, 11, 15, 7, 10, 20);
        setErrorDialog(
            [this](auto, auto funktion, std::int32_t nummer, auto beschreibung, std::int32_t stil) {
                dialogs.push_back(std::string(funktion) + "|" + std::to_string(nummer) + "|" +
                                  std::string(beschreibung) + "|" + std::to_string(stil));
            });
    }
    ~StartUpTest() override { setErrorDialog(nullptr); }
    void set(std::string_view name, std::string_view text) {
        setString(HKEY_CURRENT_USER, kSettingsKey, name, text);
    }
    static Lines formNames() {
        Lines names;
        for (const Form* form : loadedForms()) names.push_back(form->name());
        return names;
    }
    Lines dialogs;
};

}  // namespace bromvale
