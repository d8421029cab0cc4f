#include "platform/offline/reg_files/reg_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "base/registry_file_text.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/registry/data.h"

namespace bromvale::offline {

namespace {

constexpr std::size_t kFlushAt = std::size_t{64} * 1024;

// One file being written.
class Writer {
  public:
    explicit Writer(std::FILE* file) : file_(file) { text_.bytes() = RegistryFileText<char16_t>::header(); }

    void hive(const Registry& registry, std::size_t index);
    bool finish() {
        flush();
        return std::ferror(file_) == 0;
    }
    [[nodiscard]] const std::string& problem() const { return problem_; }

  private:
    void key(const std::string& path, const RegistryKey& key);
    void flush() {
        std::fwrite(text_.bytes().data(), 1, text_.bytes().size(), file_);
        text_.bytes().clear();
    }

    std::FILE* file_;
    RegistryFileText<char16_t> text_;
    std::string problem_;
};

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

// Value names may hold line breaks, which the reader takes as they stand.
void Writer::key(const std::string& path, const RegistryKey& key) {
    const std::u16string wide = wideFromStored(path);
    if (!text_.holdsKey(wide)) {
        problem_ = "the key name holds a line break or a NUL: " + ansiFromStored(path);
        return;
    }
    text_.key(wide);
    for (std::size_t i = 0; i < key.valueCount(); ++i) {
        const std::u16string name = wideFromStored(key.value(i).name());
        if (name.find(u'\0') != std::u16string::npos) {
            problem_ = "a value name holds a NUL, in the key " + ansiFromStored(path);
            return;
        }
        text_.value(name, key.value(i).type(), windowsData(key.value(i)).view());
    }
    if (text_.bytes().size() >= kFlushAt) flush();
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
