#include "platform/offline/machine.h"
#include "tests/contract/unicode_machine.h"

namespace bromvale::testing {
namespace {

std::u16string wholePath(HKEY hive, std::u16string_view path) {
    return std::u16string(hive == HKEY_CURRENT_USER ? u"HKEY_CURRENT_USER\\" : u"HKEY_LOCAL_MACHINE\\")
        .append(path);
}

}  // namespace

void makeWideKey(HKEY hive, std::u16string_view path) {
    offline::machine().registry.createKey(wholePath(hive, path));
}

void setWideValue(HKEY hive, std::u16string_view path, std::u16string_view name, DWORD type,
                  std::string_view bytes) {
    offline::machine().registry.setValue(wholePath(hive, path), name, type, bytes);
}

void writeWideFile(std::u16string_view path, std::string_view bytes) {
    offline::machine().drives.writeFile(path, bytes);
}

void makeWideFolder(std::u16string_view path) {
    offline::machine().drives.makeFolder(path);
}

void switchShortNamesOn() {
    offline::machine().drives.shortNames = true;
}

void removeWideThings() {}

}  // namespace bromvale::testing
