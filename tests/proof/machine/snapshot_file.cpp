// A reader of registry files of the proof's own.
#include <charconv>

#include "platform/machine.h"
#include "tests/proof/machine/snapshot.h"

namespace bromvale::proof {
namespace {

Text fromAnsi(std::string_view bytes) {
    Text text(bytes.size(), u'\0');
    const int written =
        bytes.empty()
            ? 0
            : MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()),
                                  reinterpret_cast<WCHAR*>(text.data()), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(written));
    return text;
}

class FileReader {
  public:
    FileReader(const std::string& bytes, std::vector<std::string>& complaints) : complaints_(complaints) {
        unicode_ = bytes.starts_with("\xFF\xFE");
        rest_ = unicode_ ? textOf(std::string_view(bytes).substr(2)) : fromAnsi(bytes);
    }

    RegistrySnapshot read() {
        const Text header = nextLine();
        if (header != (unicode_ ? View(u"Windows Registry Editor Version 5.00") : View(u"REGEDIT4")))
            complain(header);
        while (!rest_.empty()) line(nextLine());
        return std::move(registry_);
    }

  private:
    // A line with what follows behind a backslash at its end. Texts may hold line ends of their own, so one
    // inside quotes goes on.
    Text nextLine() {
        Text text;
        bool quoted = false;
        std::size_t at = 0;
        for (; at < rest_.size(); ++at) {
            const char16_t c = rest_[at];
            if (c == u'\\' && quoted) {
                text += c;
                if (++at < rest_.size()) text += rest_[at];
                continue;
            }
            const bool key = !text.empty() && text.front() == u'[';
            if (c == u'"' && !key && !text.starts_with(u";")) quoted = !quoted;
            if (c != u'\r' || quoted || at + 1 >= rest_.size() || rest_[at + 1] != u'\n') {
                text += c;
                continue;
            }
            ++at;
            if (key || !text.ends_with(u"\\")) break;
            text.pop_back();
            while (at + 1 < rest_.size() && rest_[at + 1] == u' ') ++at;
        }
        rest_.erase(0, std::min(at + 1, rest_.size()));
        return text;
    }

    void line(const Text& text) {
        if (text.empty() || text.front() == u';') return;
        if (text.front() == u'[' && text.back() == u']') {
            key_ = &registry_[lower(View(text).substr(1, text.size() - 2))];
            key_->path = text.substr(1, text.size() - 2);
            return addParents(key_->path);
        }
        std::size_t at = 0;
        Text name;
        if (text.front() == u'@') {
            at = 1;
        } else if (!quotedText(text, at, name)) {
            return complain(text);
        }
        if (key_ == nullptr || at >= text.size() || text[at] != u'=' || !value(name, text.substr(at + 1)))
            complain(text);
    }

    void addParents(const Text& path) {
        for (std::size_t slash = path.rfind(u'\\'); slash != Text::npos && slash > 0;
             slash = path.rfind(u'\\', slash - 1)) {
            StoredKey& parent = registry_[lower(View(path).substr(0, slash))];
            if (parent.path.empty()) parent.path = path.substr(0, slash);
        }
    }

    static bool quotedText(const Text& text, std::size_t& at, Text& result) {
        if (at >= text.size() || text[at] != u'"') return false;
        for (++at; at < text.size() && text[at] != u'"'; ++at) {
            if (text[at] == u'\\') ++at;
            if (at < text.size()) result += text[at];
        }
        return at++ < text.size();
    }

    bool value(const Text& name, const Text& data) {
        StoredData stored{name, 1, {}};
        std::size_t at = 0;
        Text text;
        if (data.starts_with(u"\"")) {
            if (!quotedText(data, at, text) || at != data.size()) return false;
            stored.bytes = bytesOf(text + u'\0');
        } else if (data.starts_with(u"dword:")) {
            unsigned number = 0;
            const std::string digits(data.begin() + 6, data.end());
            if (std::from_chars(digits.data(), digits.data() + digits.size(), number, 16).ec != std::errc())
                return false;
            stored.type = 4;
            for (int i = 0; i < 4; ++i, number >>= 8) stored.bytes += static_cast<char>(number & 0xFF);
        } else if (!hexData(data, stored)) {
            return false;
        }
        // A key that two rows name and that stays stands there twice.
        key_->values.insert_or_assign(lower(View(name)), stored);
        return true;
    }

    bool hexData(const Text& data, StoredData& stored) const {
        const std::string text(data.begin(), data.end());
        const std::size_t colon = text.find(':');
        if (!text.starts_with("hex") || colon == std::string::npos) return false;
        stored.type = 3;
        if (text[3] == '(') std::from_chars(text.data() + 4, text.data() + colon - 1, stored.type, 16);
        for (std::size_t at = colon + 1; at + 1 < text.size(); at += 3) {
            unsigned byte = 0;
            if (std::from_chars(text.data() + at, text.data() + at + 2, byte, 16).ec != std::errc())
                return false;
            stored.bytes += static_cast<char>(byte);
        }
        const bool isText = stored.type == 1 || stored.type == 2 || stored.type == 7;
        if (isText && !unicode_) stored.bytes = bytesOf(fromAnsi(stored.bytes));
        return true;
    }

    void complain(const Text& text) { complaints_.push_back("a line that can't be read: " + readable(text)); }

    std::vector<std::string>& complaints_;
    bool unicode_ = false;
    Text rest_;
    RegistrySnapshot registry_;
    StoredKey* key_ = nullptr;
};

}  // namespace

RegistrySnapshot readRegistryFile(const std::string& bytes, std::vector<std::string>& complaints) {
    return FileReader(bytes, complaints).read();
}

}  // namespace bromvale::proof
