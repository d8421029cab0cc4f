#include "platform/offline/reg_file_writer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/offline/registry_data.h"
#include "platform/offline/stored_text.h"

namespace bromvale::offline {

namespace {

constexpr std::size_t kFlushAt = std::size_t{64} * 1024;
constexpr std::size_t kColumns = 80;
constexpr char kHexDigits[] = "0123456789abcdef";

// One file being written, in the stored form of stored_text.h up to the last step.
class Writer {
  public:
    explicit Writer(std::FILE* file) : file_(file) {}

    void begin() {
        std::fwrite("\xFF\xFE", 1, 2, file_);
        text_ = "Windows Registry Editor Version 5.00\r\n";
    }
    void hive(const Registry& registry, std::size_t index);
    bool finish() {
        flush();
        return std::ferror(file_) == 0;
    }
    [[nodiscard]] const std::string& problem() const { return problem_; }

  private:
    void key(const std::string& path, const RegistryKey& key);
    void value(const RegistryValueNode& value);
    void number(std::string_view data);
    void bytes(const RegistryValueNode& value, std::size_t column);
    void escaped(std::string_view text);
    void flush() {
        const std::string wide = wideBytesFromStored(text_);
        std::fwrite(wide.data(), 1, wide.size(), file_);
        text_.clear();
    }

    std::FILE* file_;
    std::string text_;
    std::string problem_;
};

bool holdsLineBreak(std::string_view text) {
    return text.find_first_of("\r\n") != std::string_view::npos;
}

// A text with one NUL, at its end, can be written between quotes: nothing for any other value.
std::optional<std::string> plainTextOf(const RegistryValueNode& value) {
    const RegistryData data = value.data();
    if (value.type() != REG_SZ || (!data.narrow && data.bytes.size() % 2 != 0)) return std::nullopt;
    std::string text = data.narrow ? storedFromAnsi(data.bytes) : storedFromWideBytes(data.bytes);
    if (text.empty() || text.find('\0') != text.size() - 1) return std::nullopt;
    text.pop_back();
    return text;
}

// Depth first along a path of its own, since keys can lie thousands of levels deep.
void Writer::hive(const Registry& registry, std::size_t index) {
    struct Level {
        RegistryKey* key;
        std::size_t nextSubKey;
        std::size_t pathSize;
    };
    std::string path(hiveName(index));
    std::vector<Level> levels{{registry.root(index), 0, path.size()}};
    if (levels.front().key->valueCount() > 0) key(path, *levels.front().key);
    while (!levels.empty() && problem_.empty()) {
        Level& level = levels.back();
        RegistryKey* next = registry.tree().subKey(level.key, level.nextSubKey++);
        path.resize(level.pathSize);
        if (next == nullptr) {
            levels.pop_back();
            continue;
        }
        path += '\\';
        path += next->name();
        key(path, *next);
        levels.push_back({next, 0, path.size()});
    }
}

void Writer::key(const std::string& path, const RegistryKey& key) {
    if (holdsLineBreak(key.name()) || key.name().find('\0') != std::string_view::npos) {
        problem_ = "the key name holds a line break or a NUL: " + ansiFromStored(path);
        return;
    }
    text_ += "\r\n[";
    text_ += path;
    text_ += "]\r\n";
    for (std::size_t i = 0; i < key.valueCount() && problem_.empty(); ++i) {
        if (key.value(i).name().find('\0') != std::string_view::npos) {
            problem_ = "a value name holds a NUL, in the key " + ansiFromStored(path);
            return;
        }
        value(key.value(i));
    }
    if (text_.size() >= kFlushAt) flush();
}

void Writer::value(const RegistryValueNode& value) {
    const std::size_t start = text_.size();
    if (value.name().empty()) {
        text_ += '@';
    } else {
        escaped(value.name());
    }
    text_ += '=';
    if (const auto text = plainTextOf(value)) {
        escaped(*text);
    } else if (value.type() == REG_DWORD && value.data().bytes.size() == 4) {
        number(value.data().bytes);
    } else {
        bytes(value, text_.size() - start);
    }
    text_ += "\r\n";
}

void Writer::escaped(std::string_view text) {
    text_ += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') text_ += '\\';
        text_ += c;
    }
    text_ += '"';
}

void Writer::number(std::string_view data) {
    text_ += "dword:";
    for (std::size_t i = 4; i-- > 0;) {
        const auto byte = static_cast<unsigned char>(data[i]);
        text_ += kHexDigits[byte >> 4];
        text_ += kHexDigits[byte & 0xF];
    }
}

void Writer::bytes(const RegistryValueNode& value, std::size_t column) {
    const std::size_t start = text_.size();
    text_ += "hex";
    if (value.type() != REG_BINARY) {
        char number[16];
        std::snprintf(number, sizeof number, "(%x)", value.type());
        text_ += number;
    }
    text_ += ':';
    const GivenData windows = GivenData::asWindows(value);
    const std::string_view data = windows.view();
    column += text_.size() - start;
    for (std::size_t i = 0; i < data.size(); ++i) {
        const auto byte = static_cast<unsigned char>(data[i]);
        text_ += kHexDigits[byte >> 4];
        text_ += kHexDigits[byte & 0xF];
        column += 3;
        if (i + 1 == data.size()) break;
        text_ += ',';
        if (column + 3 >= kColumns) {
            text_ += "\\\r\n  ";
            column = 2;
        }
    }
}

RegFileError systemError(const std::string& path) {
    return {path, 0, std::string("cannot be written: ") + std::strerror(errno)};
}

}  // namespace

std::optional<RegFileError> saveRegFile(const Registry& registry, const std::string& path) {
    const std::string unfinished = path + ".part";
    std::FILE* file = std::fopen(unfinished.c_str(), "wb");
    if (file == nullptr) return systemError(path);
    Writer writer(file);
    writer.begin();
    for (std::size_t hive = 0; hive < kHiveCount && writer.problem().empty(); ++hive) {
        writer.hive(registry, hive);
    }
    bool written = writer.finish();
    written = std::fclose(file) == 0 && written;
    if (written && writer.problem().empty() && std::rename(unfinished.c_str(), path.c_str()) == 0) {
        return std::nullopt;
    }
    const RegFileError error =
        writer.problem().empty() ? systemError(path) : RegFileError{path, 0, writer.problem()};
    std::remove(unfinished.c_str());
    return error;
}

}  // namespace bromvale::offline
