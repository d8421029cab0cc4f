#include "tests/hives/disk/made_creg.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace bromvale::offline {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFFu;
constexpr std::size_t kHeader = 32;
constexpr std::size_t kEntry = 28;

template <class Number>
void put(std::string& bytes, std::size_t at, Number number) {
    static_assert(std::endian::native == std::endian::little);
    if (bytes.size() < at + sizeof number) bytes.resize(at + sizeof number);
    std::memcpy(bytes.data() + at, &number, sizeof number);
}

std::uint32_t number(std::size_t size) {
    return static_cast<std::uint32_t>(size);
}

std::uint16_t shortNumber(std::size_t size) {
    return static_cast<std::uint16_t>(size);
}

std::uint32_t hashOf(const std::string& name) {
    std::uint32_t sum = 0;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        sum += byte >= 'a' && byte <= 'z' ? byte - 0x20u : byte;
    }
    return sum;
}

class Writer {
  public:
    std::string write(const MadeCregKey& root) {
        names_.assign(kHeader, '\0');
        names_.replace(0, 4, "RGKN");
        put(names_, 8, number(kHeader));
        data_.assign(kHeader, '\0');
        data_.replace(0, 4, "RGDB");
        addRoot(root);
        names_.resize((names_.size() + 4095) / 4096 * 4096);
        const std::size_t used = data_.size();
        data_.resize((data_.size() + kHeader + 4095) / 4096 * 4096);
        // What is free is an entry that no key has.
        put(data_, used, number(data_.size() - used));
        put(data_, used + 4, kNone);
        put(names_, 4, number(names_.size()));
        put(data_, 4, number(data_.size()));
        put(data_, 8, number(data_.size() - used));
        put(data_, 12, std::uint16_t{8});
        put(data_, 16, number(used));
        put(data_, 20, shortNumber(count_));
        std::string file(kHeader, '\0');
        file.replace(0, 4, "CREG");
        put(file, 6, std::uint16_t{1});
        put(file, 8, number(kHeader + names_.size()));
        put(file, 16, std::uint16_t{1});
        put(file, 18, std::uint16_t{32});
        put(file, 20, std::uint32_t{1});
        return file + names_ + data_;
    }

  private:
    void addRoot(const MadeCregKey& root) {
        const std::size_t at = newEntry(kNone);
        put(names_, at + 24, kNone);
        addSubKeys(root, at);
    }

    std::size_t newEntry(std::uint32_t parent) {
        const std::size_t at = names_.size();
        names_.resize(at + kEntry);
        put(names_, at + 12, parent);
        put(names_, at + 16, kNone);
        put(names_, at + 20, kNone);
        return at;
    }

    void addSubKeys(const MadeCregKey& key, std::size_t parent) {
        std::size_t link = parent + 16;
        for (const MadeCregKey& subKey : key.subKeys) {
            const std::size_t at = newEntry(number(parent));
            put(names_, link, number(at));
            link = at + 20;
            put(names_, at + 4, hashOf(subKey.name));
            put(names_, at + 24, shortNumber(count_));
            put(names_, at + 26, std::uint16_t{0});
            addData(subKey);
            addSubKeys(subKey, at);
        }
    }

    void addData(const MadeCregKey& key) {
        std::string entry(20, '\0');
        entry += key.name;
        for (const MadeCregValue& value : key.values) {
            std::string head(12, '\0');
            put(head, 0, value.type);
            put(head, 8, shortNumber(value.name.size()));
            put(head, 10, shortNumber(value.data.size()));
            entry += head + value.name + value.data;
        }
        put(entry, 0, number(entry.size()));
        put(entry, 4, shortNumber(count_++));
        put(entry, 8, number(entry.size()));
        put(entry, 12, shortNumber(key.name.size()));
        put(entry, 14, shortNumber(key.values.size()));
        data_ += entry;
    }

    std::string names_;
    std::string data_;
    std::size_t count_ = 0;
};

}  // namespace

MadeCregKey& MadeCregKey::at(const std::string& path) {
    MadeCregKey* key = this;
    for (std::size_t from = 0; from < path.size();) {
        const std::size_t end = std::min(path.find('\\', from), path.size());
        const std::string wanted = path.substr(from, end - from);
        const auto found = std::ranges::find(key->subKeys, wanted, &MadeCregKey::name);
        key = found != key->subKeys.end() ? &*found : &key->subKeys.emplace_back(MadeCregKey{wanted, {}, {}});
        from = end + 1;
    }
    return *key;
}

std::string cregBytes(const MadeCregKey& root) {
    return Writer().write(root);
}

std::size_t cregEntry(std::size_t number) {
    return kHeader + kHeader + number * kEntry;
}

}  // namespace bromvale::offline
