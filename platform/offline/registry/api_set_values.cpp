// Values: writing and deleting, and how the machine's events tell it.
#include <string>
#include <string_view>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/registry/api.h"
#include "platform/offline/registry/data.h"

using namespace bromvale::offline;

namespace {

std::string quoted(std::string_view text) {
    std::string result(1, '"');
    result.append(text).push_back('"');
    return result;
}

// Events are told in Windows-1252.
std::string nameOf(std::string_view name) {
    return name.empty() ? "@" : quoted(ansiFromStored(name));
}

std::string hexOf(std::string_view data) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char c : data) {
        const auto byte = static_cast<unsigned char>(c);
        if (!text.empty()) text += ',';
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

std::string dataOf(DWORD type, std::string_view data) {
    if (type != REG_SZ)
        return std::string("hex(").append(std::to_string(type)).append("):").append(hexOf(data));
    // A text without its NUL is something else than one with it.
    const bool terminated = data.ends_with('\0');
    if (terminated) data.remove_suffix(1);
    return quoted(data).append(terminated ? "" : " without NUL");
}

void record(EventKind kind, const RegistryKey& key, std::string what, DWORD type = 0) {
    machine().events.record({kind, ansiFromStored(pathOf(key)), std::move(what), type});
}

}  // namespace

LONG RegSetValueExA(HKEY handle, LPCSTR valueName, DWORD /*reserved*/, DWORD type, const BYTE* data,
                    DWORD dataSize) {
    if (const auto fault = faults().at("RegSetValueExA")) return *fault;
    RegistryKey* key = nullptr;
    if (const LONG result = machine().registry.resolve(handle, KEY_SET_VALUE, key)) return result;
    const StoredText stored(valueName);
    const std::string_view name = stored.view();
    if (unitCount(name) > kLongestValueName) return ERROR_INVALID_PARAMETER;
    if (dataSize > 0 && data == nullptr) return ERROR_NOACCESS;
    std::size_t size = dataSize;
    // The callers give a text's length without its NUL. Windows looks one byte further and takes the NUL
    // along.
    if (isText(type) && dataSize > 0 && data[dataSize - 1] != 0 && data[dataSize] == 0) ++size;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    machine().registry.tree().setValue(key, name, type,
                                       StoredData::fromAnsi(type, bytes, textRules().codePage).view());
    record(EventKind::ValueSet, *key, nameOf(name) + "=" + dataOf(type, bytes), type);
    return ERROR_SUCCESS;
}

LONG RegDeleteValueA(HKEY handle, LPCSTR valueName) {
    if (const auto fault = faults().at("RegDeleteValueA")) return *fault;
    RegistryKey* key = nullptr;
    if (const LONG result = machine().registry.resolve(handle, KEY_SET_VALUE, key)) return result;
    const StoredText name(valueName);
    if (!machine().registry.tree().removeValue(key, name.view())) return ERROR_FILE_NOT_FOUND;
    record(EventKind::ValueDeleted, *key, nameOf(name.view()));
    return ERROR_SUCCESS;
}
