#pragma once
#include "base/failure.h"
#include "core/registry_layer.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text_file.h"
#include "tests/support/window_test.h"

namespace bromvale::testing {

// A machine with an empty registry and the main window, whose result list the tests fill themselves.
class RemovalTest : public WindowTest {
  protected:
    RemovalTest() { makeFolderOnDisk(folder() + "Backup"); }

    static ListView& list() { return form().scan.lvwRegKeys; }
    static void add(std::string_view keyLine, std::string_view name, std::string_view data,
                    std::string_view hive = "-2147483646") {
        list().add({keyLine, name, data, hive}, 1);
    }
    // The key [HKEY_LOCAL_MACHINE\Software\Probe\name] with a value, and its row.
    void addKey(const std::string& name) {
        setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\" + name, "", "Wert " + name);
        add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\" + name + "]", "@", "Wert " + name);
    }
    bool isGone(const std::string& name) {
        return !keyExists(HKEY_LOCAL_MACHINE, "Software\\Probe\\" + name);
    }
    static Texts rowKeys() { return rowTexts(list()); }
    static void select(std::initializer_list<const char*> endings) {
        for (int row = 1; row <= list().count(); ++row) {
            for (const char* ending : endings) {
                if (list().item(row).text().ends_with(ending)) list().item(row).setSelected(true);
            }
        }
    }
    static void removeMarked() {
        form().scan.chbMarkierteKeysEntfernen.setValue(1);
        form().scan.ProblemeEntfernen();
    }

    // The bytes of the one undo file.
    std::string undoFile() { return oneFile("R\xFC*.reg"); }
    // The bytes of the one complete copy.
    std::string completeCopy() { return oneFile("V*.reg"); }
    std::string oneFile(std::string_view pattern) {
        const Texts files = filesIn(BackupPath, pattern);
        return files.size() == 1 ? readWholeFile(BackupPath + files[0])
                                 : std::string("<") + std::to_string(files.size()) + " files>";
    }
    // What stands behind the header's last line.
    std::string undoRecords() {
        const std::string bytes = undoFile();
        const std::string end = "\r\n\r\r\n";
        const std::size_t at = bytes.find(end);
        return at == std::string::npos ? "<no header: " + bytes + ">" : bytes.substr(at + end.size());
    }

    const std::string markedMessage = "Die markierten Fehler wurden erfolgreich entfernt und gesichert.";
    const std::string allMessage = "Die erkannten Fehler wurden erfolgreich entfernt und gesichert.";
};

}  // namespace bromvale::testing
