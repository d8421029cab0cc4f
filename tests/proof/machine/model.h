#pragma once
// A machine as it truly is: its keys, values and files with their names in UTF-16. The generator makes it,
// `putUp` builds the offline machine from it, and the oracle judges by it.
#include <cstdint>
#include <string>
#include <vector>

#include "tests/proof/machine/letters.h"

namespace bromvale::proof {

class Random;

inline constexpr std::uint32_t kNone = 0;
inline constexpr std::uint32_t kText = 1;
inline constexpr std::uint32_t kExpandText = 2;
inline constexpr std::uint32_t kBinary = 3;
inline constexpr std::uint32_t kNumber = 4;
inline constexpr std::uint32_t kMultiText = 7;

inline constexpr std::int32_t kUser = -2147483647;     // HKEY_CURRENT_USER
inline constexpr std::int32_t kMachine = -2147483646;  // HKEY_LOCAL_MACHINE

struct Value {
    Text name;
    std::uint32_t type = kText;
    std::string bytes;  // texts in UTF-16LE
};

struct Key {
    Text name;
    std::vector<Value> values;
    std::vector<Key> keys;
    bool denied = false;

    [[nodiscard]] const Key* find(View path) const;
    Key& make(View path);
    // A value of the same name is replaced.
    void set(View valueName, std::uint32_t type, std::string bytes);
    void setText(View valueName, View text);
};

enum class EntryKind : std::uint8_t { File, Folder, LinkToFolder, DanglingLink };

struct Entry {
    Text name;
    EntryKind kind = EntryKind::File;
    std::vector<Entry> entries;
    Text target{};  // of a link: a whole path

    [[nodiscard]] const Entry* find(View path) const;
    // Folders above it are made.
    Entry& make(View path, EntryKind kind);
};

enum class Family : std::uint8_t { Nine, Nt4, Modern };

struct System {
    const char* os = "Windows XP";
    Family family = Family::Modern;
    unsigned codePage = 1252;
    bool sixtyFour = false;         // the system
    bool programSixtyFour = false;  // the program
    bool shortNames = false;
};

// What the user does on the machine besides scanning and removing.
struct Plan {
    bool markedOnly = false;   // only some rows are removed
    bool permanent = false;    // files are deleted for good
    std::vector<Text> list;    // lines of liste.txt, in this order
    std::vector<Text> chosen;  // folders chosen in the dialog
};

struct Model {
    std::uint64_t seed = 0;
    System system;
    Key machine;  // HKEY_LOCAL_MACHINE
    Key user;     // HKEY_CURRENT_USER
    Entry drive{u"C:", EntryKind::Folder, {}, {}};
    Plan plan;

    [[nodiscard]] const Key& hive(std::int32_t number) const { return number == kUser ? user : machine; }
};

// Made of the seed alone.
[[nodiscard]] Model generate(std::uint64_t seed);
[[nodiscard]] Model generate(std::uint64_t seed, const System& system);
void generateRegistry(Model& model, Random& random);
void generateFiles(Model& model, Random& random);

// The whole machine as lines of readable text, for the report of a failing seed.
[[nodiscard]] std::string describe(const Model& model);

// The names of a path, without empty ones.
[[nodiscard]] std::vector<Text> split(View path);

}  // namespace bromvale::proof
