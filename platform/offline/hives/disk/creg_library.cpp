// A registry of Windows 95 to ME as libcreg reads it. Only for a process of its own: on a damaged file the
// library may walk in a circle, and it keeps some of the memory of what it refuses.
#include <algorithm>

#include "platform/offline/hives/disk/creg_parts.h"
#include "platform/offline/locale/code_page.h"

#ifdef BROMVALE_CREG
// Where this name (of windows_types.h) is missing, the library's header wants the header of another one, for
// calls that are not made here.
#ifndef WINAPI
#error "libcreg.h stands behind windows_types.h"
#endif
#include <libcreg.h>
#endif

namespace bromvale::offline {

#ifdef BROMVALE_CREG

namespace {

constexpr std::size_t kDeepest = 512;  // as Windows allows it
constexpr std::size_t kLongestText = 4096;

class Error {
  public:
    ~Error() { libcreg_error_free(&error_); }
    Error() = default;
    Error(const Error&) = delete;
    Error& operator=(const Error&) = delete;

    [[nodiscard]] libcreg_error_t** out() {
        libcreg_error_free(&error_);
        return &error_;
    }
    // The library's own words are of its functions: they stand behind ours.
    [[nodiscard]] std::string text() const {
        char text[512] = {};
        if (error_ == nullptr || libcreg_error_sprint(error_, text, sizeof text) <= 0)
            return "no reason is told";
        return text;
    }

  private:
    libcreg_error_t* error_ = nullptr;
};

struct Unreadable {
    std::string what;
};

template <class Item, int (*Free)(Item**, libcreg_error_t**)>
class Owned {
  public:
    Owned() = default;
    ~Owned() {
        if (item_ != nullptr) Free(&item_, nullptr);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    [[nodiscard]] Item** out() { return &item_; }
    [[nodiscard]] Item* get() const { return item_; }

  private:
    Item* item_ = nullptr;
};
using File = Owned<libcreg_file_t, libcreg_file_free>;
using Key = Owned<libcreg_key_t, libcreg_key_free>;
using Value = Owned<libcreg_value_t, libcreg_value_free>;

class Reader {
  public:
    Reader(std::size_t fileSize, UINT codePage) : fileSize_(fileSize), codePage_(codePage) {}

    CregTree read(const std::string& path) {
        File file;
        Key root;
        check(libcreg_file_initialize(file.out(), error_.out()), "nothing is left to open it with");
        check(libcreg_file_open(file.get(), path.c_str(), LIBCREG_OPEN_READ, error_.out()),
              "it can't be opened");
        check(libcreg_file_get_root_key(file.get(), root.out(), error_.out()), "its root can't be read");
        CregTree tree;
        readKey(root.get(), tree.root, 0);
        tree.keys = keys_;
        tree.values = values_;
        return tree;
    }

  private:
    // 1 is the library's success; 0 is "not there" where something has to be.
    void check(int result, const char* what) const {
        if (result != 1) throw Unreadable{std::string(what) + " (" + error_.text() + ")"};
    }

    template <class Item>
    std::u16string nameOf(Item* item, int (*getSize)(Item*, std::size_t*, libcreg_error_t**),
                          int (*get)(Item*, std::uint8_t*, std::size_t, libcreg_error_t**)) {
        std::size_t size = 0;
        // No size is told of a name that isn't there: the default value, the root.
        if (getSize(item, &size, error_.out()) != 1 || size == 0) return {};
        if (size > kLongestText) throw Unreadable{"a name is longer than Windows allows"};
        std::string name(size, '\0');
        check(get(item, reinterpret_cast<std::uint8_t*>(name.data()), size, error_.out()),
              "a name can't be read");
        name.resize(std::min(name.find('\0'), name.size()));
        return wideFromAnsi(name, codePage_).text;
    }

    void readKey(libcreg_key_t* from, CregKey& to, std::size_t depth) {
        if (depth > kDeepest) throw Unreadable{"keys lie deeper in each other than Windows allows"};
        // Each key has a place of its own, so that there can't be more of them than the file has bytes.
        if (++keys_ > fileSize_ / kKeyNameSize) throw Unreadable{"it has more keys than fit into it"};
        if (depth > 0) to.name = nameOf(from, libcreg_key_get_name_size, libcreg_key_get_name);
        int count = 0;
        check(libcreg_key_get_number_of_values(from, &count, error_.out()),
              "a key's values can't be counted");
        for (int i = 0; i < count; ++i) {
            Value value;
            check(libcreg_key_get_value_by_index(from, i, value.out(), error_.out()),
                  "a value can't be read");
            readValue(value.get(), to.values.emplace_back());
        }
        check(libcreg_key_get_number_of_sub_keys(from, &count, error_.out()),
              "a key's sub keys can't be counted");
        for (int i = 0; i < count; ++i) {
            Key subKey;
            check(libcreg_key_get_sub_key_by_index(from, i, subKey.out(), error_.out()),
                  "a sub key can't be read");
            readKey(subKey.get(), to.subKeys.emplace_back(), depth + 1);
        }
    }

    void readValue(libcreg_value_t* from, CregValue& to) {
        ++values_;
        to.name = nameOf(from, libcreg_value_get_name_size, libcreg_value_get_name);
        check(libcreg_value_get_value_type(from, &to.type, error_.out()), "a value's type can't be read");
        std::size_t size = 0;
        check(libcreg_value_get_value_data_size(from, &size, error_.out()), "a value's size can't be read");
        bytes_ += size;
        if (bytes_ > fileSize_) throw Unreadable{"its values are longer than the file"};
        to.data.resize(size);
        if (size == 0) return;
        check(libcreg_value_get_value_data(from, reinterpret_cast<std::uint8_t*>(to.data.data()), size,
                                           error_.out()),
              "a value's data can't be read");
    }

    std::size_t fileSize_;
    UINT codePage_;
    Error error_;
    std::size_t keys_ = 0;
    std::size_t values_ = 0;
    std::size_t bytes_ = 0;
};

}  // namespace

CregAnswer readByLibrary(const std::string& path, std::size_t fileSize, UINT codePage) {
    try {
        return Reader(fileSize, codePage).read(path);
    } catch (const Unreadable& unreadable) {
        return unreadable.what;
    }
}

bool hasCregReader() {
    return true;
}

#else

CregAnswer readByLibrary(const std::string&, std::size_t, UINT) {
    return "this program was built without libcreg, which reads registries of Windows 95 to ME: install "
           "libcreg-dev and build it again";
}

bool hasCregReader() {
    return false;
}

#endif

}  // namespace bromvale::offline
