// One value in the words of the registry editor, in both of its forms: read again it has the same name, type
// and bytes.
#include "base/registry_file_text.h"
#include "platform/offline/files/other_half.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

using offline::OtherHalf;
using offline::Registry;

template <class Char>
std::basic_string<Char> textOf(std::string_view bytes) {
    if constexpr (sizeof(Char) == 1) {
        return std::string(bytes);
    } else {
        std::u16string text;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
            text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          static_cast<unsigned char>(bytes[i + 1]) << 8);
        }
        return text;
    }
}

template <class Char>
void writeAndRead(const std::basic_string<Char>& key, const std::basic_string<Char>& name, std::uint32_t type,
                  std::string_view data) {
    const OtherHalf half;
    RegistryFileText<Char> file;
    const std::string_view hive = "HKEY_LOCAL_MACHINE\\";
    const std::basic_string<Char> path = std::basic_string<Char>(hive.begin(), hive.end()) + key;
    const bool oneName = key.find(static_cast<Char>('\\')) == key.npos && !key.empty() &&
                         key.size() <= offline::kLongestKeyName && name.size() <= offline::kLongestValueName;
    if (!oneName || !file.holdsKey(path) || !file.holdsName(name) || !file.holdsData(type, data)) return;
    file.key(path);
    file.value(name, type, data);
    Registry registry(half);
    require(!loadRegText(file.header() + file.bytes(), "", registry), "what was written can be read");
    std::string found;
    std::uint32_t foundType = 0;
    bool sameName = false;
    if constexpr (sizeof(Char) == 1) {
        const auto values = registry.values(path);
        require(values.size() == 1, "one value");
        sameName = values[0].name == name;
        foundType = values[0].type;
        found = values[0].data;
    } else {
        const auto values = registry.wideValues(path);
        require(values.size() == 1, "one value");
        sameName = values[0].name == name;
        foundType = values[0].type;
        found = values[0].bytes;
    }
    require(sameName && foundType == type && found == data, "name, type and bytes are the same");
}

// Form, type, the key's name and a NUL-free length byte each, then the data.
void run(std::string_view input) {
    Pieces pieces(input);
    const bool wide = pieces.byte() % 2 != 0;
    const std::uint32_t type = pieces.byte() % 16;
    const std::string_view key = pieces.take(pieces.byte());
    const std::string_view name = pieces.take(pieces.byte());
    if (wide) return writeAndRead(textOf<char16_t>(key), textOf<char16_t>(name), type, pieces.rest());
    writeAndRead(textOf<char>(key), textOf<char>(name), type, pieces.rest());
}

std::vector<std::string> seeds() {
    using namespace std::string_literals;
    return {"\x00\x01\x03[a]\x04n\"\\=C:\\x \"y\"\0"s,
            "\x01\x01\x04k\0l\0\x04n\0=\0a\0\\\0\0\0"s,
            "\x00\x04\x01k\x01n\x78\x56\x34\x12"s,
            "\x01\x07\x02k\0\x00"
            "a\0\0\0b\0\0\0\0\0"s,
            "\x00\x03\x01k\x01n"s + std::string(60, '\xA5'),
            "\x01\x0B\x02k\0\x02n\0"
            "12345678"s};
}

const KnownTarget kTarget({"complete_copy", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
