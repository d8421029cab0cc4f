#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace bromvale {

// The bytes of a file of the registry editor, in one of its two forms:
//   char16_t  version 5.00, UTF-16LE with mark, for Windows 2000 and later;
//   char      "REGEDIT4", bytes of the code page, for the systems before.
// Data is given as that form has it: the texts of types 1, 2 and 7 in UTF-16LE or in the code page, all other
// types as they are stored. Reading the file again gives the same names, types and bytes, as long as the
// functions that begin with "holds" say yes.
template <class Char>
class RegistryFileText {
  public:
    using View = std::basic_string_view<Char>;

    // False for code pages in which a character may have several bytes: the second one can look like a quote
    // or a backslash. Of no meaning for version 5.00.
    explicit RegistryFileText(bool singleBytes = true) : singleBytes_(singleBytes) {}

    // What a file begins with.
    [[nodiscard]] static std::string header();

    // The path with its hive, from which on values belong to that key.
    void key(View path);
    // The empty name is the default value.
    void value(View name, std::uint32_t type, std::string_view data);

    // A line break or a NUL has no form in a name.
    [[nodiscard]] bool holdsKey(View path) const;
    [[nodiscard]] bool holdsName(View name) const;
    // The registry editor puts a NUL behind texts that have none, and takes half a character for something
    // else.
    [[nodiscard]] static bool holdsData(std::uint32_t type, std::string_view data);

    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    [[nodiscard]] std::string& bytes() { return bytes_; }

  private:
    [[nodiscard]] bool isPlainText(std::uint32_t type, std::string_view data) const;
    [[nodiscard]] char* roomFor(std::size_t count);
    void units(View text);
    void ascii(std::string_view text);
    template <class Text>
    void quoted(const Text& text, std::size_t size);
    void number(std::string_view data);
    void hex(std::uint32_t type, std::string_view data, std::size_t column);

    std::string bytes_;
    bool singleBytes_;
};

extern template class RegistryFileText<char>;
extern template class RegistryFileText<char16_t>;

}  // namespace bromvale
