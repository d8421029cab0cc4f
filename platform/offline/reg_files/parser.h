// The grammar of registry files: what the registry editor exports, REGEDIT4 and version 5.00. Knows nothing
// of the registry that a file is read into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/offline/reg_files/lines.h"
#include "platform/offline/registry/tree.h"

namespace bromvale::offline {

// What a file says, in its order. Paths and names are in the stored form of stored_text.h. These do nothing:
// a file is only checked.
class RegFileActions {
  public:
    virtual ~RegFileActions() = default;
    // `path` is the part behind the hive's name; doubled backslashes count as one.
    virtual void key(std::size_t /*hive*/, std::string_view /*path*/) {}
    virtual void deleteKey(std::size_t /*hive*/, std::string_view /*path*/) {}
    virtual void value(std::string_view /*name*/, std::uint32_t /*type*/, const RegistryData& /*data*/) {}
    virtual void deleteValue(std::string_view /*name*/) {}
};

// Thrown at the first line that is wrong.
struct RegFileMalformed {
    std::size_t line;
    std::string reason;
};

class RegFileParser {
  public:
    RegFileParser(RegFileLines::Read read, RegFileActions& actions);
    void run();

  private:
    void readHeader();
    void readLine();
    void readKey();
    void readValue();
    void readText(std::string_view name);
    void readNumber(std::string_view name, std::string_view digits);
    void readBytes(std::string_view name, std::uint32_t type);
    void readTypedBytes(std::string_view name);
    std::string_view quoted(std::string& buffer);
    bool continued();
    bool take(std::string_view word);
    void skipBlanks();
    void expectLineEnd(std::string_view behind);
    void requireLineBreak();
    [[noreturn]] void fail(std::string reason) const;

    RegFileLines lines_;
    RegFileActions& actions_;
    RegFileLines::Line line_;
    std::string_view rest_;  // of line_, not yet read
    std::string name_;
    std::string data_;
    std::size_t statementLine_ = 0;
    bool wideData_ = false;  // hex data of texts are UTF-16LE
    bool inKey_ = false;
};

}  // namespace bromvale::offline
