// What a process tells of a registry of Windows 95 to ME that it has read: numbers and texts, one after the
// other.
#include "platform/offline/hives/bytes.h"
#include "platform/offline/hives/disk/creg_parts.h"

namespace bromvale::offline {
namespace {

class Writer {
  public:
    void number(std::size_t number) {
        const std::uint64_t wide = number;
        bytes_.append(reinterpret_cast<const char*>(&wide), sizeof wide);
    }
    void text(std::string_view text) {
        number(text.size());
        bytes_ += text;
    }
    void text(std::u16string_view text) {
        this->text(std::string_view(reinterpret_cast<const char*>(text.data()), text.size() * 2));
    }
    void key(const CregKey& key) {
        text(key.name);
        number(key.values.size());
        for (const CregValue& value : key.values) {
            text(value.name);
            number(value.type);
            text(value.data);
        }
        number(key.subKeys.size());
        for (const CregKey& subKey : key.subKeys) this->key(subKey);
    }
    [[nodiscard]] std::string taken() { return std::move(bytes_); }

  private:
    std::string bytes_;
};

class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    std::size_t number() {
        const std::uint64_t number = bytes_.u64(at_);
        at_ += sizeof number;
        return number;
    }
    std::string text() {
        const std::size_t size = number();
        const std::string_view text = bytes_.text(at_, size);
        at_ += size;
        return std::string(text);
    }
    std::u16string wide() {
        const std::string bytes = text();
        std::u16string text(bytes.size() / 2, u'\0');
        bytes.copy(reinterpret_cast<char*>(text.data()), text.size() * 2);
        return text;
    }
    void key(CregKey& key) {
        key.name = wide();
        for (std::size_t left = number(); left > 0; --left) {
            CregValue& value = key.values.emplace_back();
            value.name = wide();
            value.type = static_cast<std::uint32_t>(number());
            value.data = text();
        }
        for (std::size_t left = number(); left > 0; --left) this->key(key.subKeys.emplace_back());
    }

  private:
    HiveBytes bytes_;
    std::size_t at_ = 0;
};

}  // namespace

std::string bytesOf(const CregAnswer& answer) {
    Writer writer;
    const CregTree* const tree = std::get_if<CregTree>(&answer);
    writer.number(tree != nullptr ? 1 : 0);
    if (tree == nullptr) {
        writer.text(std::get<std::string>(answer));
    } else {
        writer.number(tree->keys);
        writer.number(tree->values);
        writer.key(tree->root);
    }
    return writer.taken();
}

CregAnswer answerIn(std::string_view bytes) {
    Reader reader(bytes);
    if (reader.number() == 0) return reader.text();
    CregTree tree;
    tree.keys = reader.number();
    tree.values = reader.number();
    reader.key(tree.root);
    return tree;
}

}  // namespace bromvale::offline
