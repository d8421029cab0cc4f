#include "platform/offline/reg_files/reg_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

#include "base/registry_file_text.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/registry/data.h"

namespace bromvale::offline {

namespace {

constexpr std::size_t kFlushAt = std::size_t{64} * 1024;

// What becomes of a name that has no form in a registry file.
enum class Unwritable { IsProblem, IsLeftOut };

// One file being written, or a text without one.
class Writer {
  public:
    Writer(std::FILE* file, Unwritable unwritable) : file_(file), unwritable_(unwritable) {
        text_.bytes() = RegistryFileText<char16_t>::header();
    }

    // `path` is the root's own.
    void all(const Registry& registry, RegistryKey* root, std::string path, bool rootAlways);
    bool finish() {
        flush();
        return std::ferror(file_) == 0;
    }
    [[nodiscard]] const std::string& problem() const { return problem_; }
    [[nodiscard]] std::size_t leftOut() const { return leftOut_; }
    [[nodiscard]] std::string& bytes() { return text_.bytes(); }

  private:
    // False for a key that is left out, with all below it.
    bool key(const std::string& path, const RegistryKey& key);
    void value(const std::string& path, const RegistryValueNode& value);
    void unwritable(const std::string& what, const std::string& path) {
        if (unwritable_ == Unwritable::IsProblem) problem_ = what + ansiFromStored(path);
        ++leftOut_;
    }
    void flush() {
        std::fwrite(text_.bytes().data(), 1, text_.bytes().size(), file_);
        text_.bytes().clear();
    }

    std::FILE* file_;
    Unwritable unwritable_;
    RegistryFileText<char16_t> text_;
    std::string problem_;
    std::size_t leftOut_ = 0;
};

// Depth first along a path of its own, since keys can lie thousands of levels deep.
void Writer::all(const Registry& registry, RegistryKey* root, std::string path, bool rootAlways) {
    struct Level {
        RegistryKey* key;
        std::size_t nextSubKey;
        std::size_t pathSize;
    };
    if ((rootAlways || root->valueCount() > 0) && !key(path, *root)) return;
    std::vector<Level> levels{{root, 0, path.size()}};
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
        if (key(path, *next)) levels.push_back({next, 0, path.size()});
    }
}

bool Writer::key(const std::string& path, const RegistryKey& key) {
    const std::u16string wide = wideFromStored(path);
    if (!text_.holdsKey(wide)) {
        unwritable("the key name holds a line break or a NUL: ", path);
        return false;
    }
    text_.key(wide);
    for (std::size_t i = 0; i < key.valueCount() && problem_.empty(); ++i) value(path, key.value(i));
    if (file_ != nullptr && text_.bytes().size() >= kFlushAt) flush();
    return true;
}

// Names may hold line breaks, which the reader takes as they stand.
void Writer::value(const std::string& path, const RegistryValueNode& value) {
    const std::u16string name = wideFromStored(value.name());
    if (name.find(u'\0') != std::u16string::npos) {
        unwritable("a value name holds a NUL, in the key ", path);
    } else {
        text_.value(name, value.type(), windowsData(value).view());
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
    Writer writer(file, Unwritable::IsProblem);
    for (std::size_t hive = 0; hive < kHiveCount && writer.problem().empty(); ++hive) {
        writer.all(registry, registry.root(hive), std::string(hiveName(hive)), false);
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

std::string regFileOf(const Registry& registry, std::span<const std::u16string> keys, std::size_t& leftOut) {
    Writer writer(nullptr, Unwritable::IsLeftOut);
    for (std::size_t hive = 0; hive < kHiveCount && keys.empty(); ++hive)
        writer.all(registry, registry.root(hive), std::string(hiveName(hive)), false);
    for (const std::u16string& path : keys) {
        if (RegistryKey* const key = registry.keyOf(path)) writer.all(registry, key, pathOf(*key), true);
    }
    leftOut = writer.leftOut();
    return std::move(writer.bytes());
}

}  // namespace bromvale::offline
