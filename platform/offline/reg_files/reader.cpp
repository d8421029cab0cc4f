#include "platform/offline/reg_files/reg_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/offline/reg_files/parser.h"

namespace bromvale::offline {

namespace {

class Apply : public RegFileActions {
  public:
    explicit Apply(Registry& registry) : registry_(registry) {}

    void key(std::size_t hive, std::string_view path) override { key_ = registry_.makeKey(hive, path); }
    // Values that follow a deleted key have none to go to; the registry editor passes over them too.
    void deleteKey(std::size_t hive, std::string_view path) override {
        key_ = nullptr;
        registry_.deleteKey(hive, path);
    }
    void value(std::string_view name, std::uint32_t type, const RegistryData& data) override {
        if (key_ != nullptr) registry_.setValue(key_, name, type, data);
    }
    void deleteValue(std::string_view name) override {
        if (key_ != nullptr) registry_.deleteValue(key_, name);
    }

  private:
    Registry& registry_;
    RegistryKey* key_ = nullptr;
};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

RegFileLines::Read readerOf(std::FILE* file) {
    return [file](char* to, std::size_t size) { return std::fread(to, 1, size, file); };
}

RegFileLines::Read readerOf(std::string_view bytes) {
    return [bytes](char* to, std::size_t size) mutable {
        const std::size_t count = bytes.copy(to, size);
        bytes.remove_prefix(count);
        return count;
    };
}

std::optional<RegFileError> parse(const std::string& name, RegFileLines::Read read, RegFileActions& actions) {
    try {
        RegFileParser(std::move(read), actions).run();
        return std::nullopt;
    } catch (const RegFileMalformed& malformed) {
        return RegFileError{name, malformed.line, malformed.reason};
    }
}

std::string contentOf(std::FILE* file) {
    std::string content;
    char buffer[4096];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        content.append(buffer, count);
    }
    return content;
}

RegFileError systemError(const std::string& path, const char* what) {
    return {path, 0, std::string(what) + ": " + std::strerror(errno)};
}

}  // namespace

std::optional<RegFileError> loadRegFile(const std::string& path, Registry& registry) {
    errno = 0;
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) return systemError(path, "cannot be opened");
    // A pipe can be read once only.
    if (std::fseek(file.get(), 0, SEEK_SET) != 0) return loadRegText(contentOf(file.get()), path, registry);

    RegFileActions check;
    auto error = parse(path, readerOf(file.get()), check);
    if (std::ferror(file.get()) != 0) return systemError(path, "cannot be read");
    if (error) return error;
    std::rewind(file.get());
    Apply apply(registry);
    return parse(path, readerOf(file.get()), apply);
}

std::optional<RegFileError> loadRegText(std::string_view bytes, const std::string& name, Registry& registry) {
    RegFileActions check;
    if (auto error = parse(name, readerOf(bytes), check)) return error;
    Apply apply(registry);
    return parse(name, readerOf(bytes), apply);
}

}  // namespace bromvale::offline
