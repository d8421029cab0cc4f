// Whole disks of Windows for tests: the folders, hives and users that findWindows looks for, of each
// generation in the language and the cases of letters of its time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/hives/disk/made_creg.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {

enum class Generation { W95, W98, Me, Nt4, W2000, Xp, Vista, Seven, SevenX64, Ten, Eleven };
std::ostream& operator<<(std::ostream& out, Generation generation);

// "HKEY\\Key\\Key" below a made key; what is missing is made.
MadeKey& keyAt(MadeKey& root, std::u16string_view path);
MadeValue textValue(std::u16string name, std::u16string_view text, std::uint32_t type = 1);
MadeValue numberValue(std::u16string name, std::uint32_t number);
std::string bytesOf(std::u16string_view text);  // with a NUL

struct DiskPlan {
    Generation generation = Generation::SevenX64;
    // Called before the hives are written, to put in what a test wants.
    std::function<void(MadeHive& software)> software;
    std::function<void(MadeHive& system)> system;
    std::function<void(MadeHive& user, std::size_t number)> user;
    std::function<void(MadeHive& classes, std::size_t number)> classes;
    std::function<void(MadeCregKey& machine)> machine;  // 9x
    char letter = 'C';
};

struct MadeDisk {
    std::filesystem::path root;
    std::filesystem::path windows;  // the folder
    std::filesystem::path config;   // where the machine's hives are
    std::filesystem::path software;
    std::filesystem::path system;
    struct User {
        std::u16string name;
        std::string sid;
        std::u16string profile;  // path of Windows
        std::filesystem::path folder;
        std::filesystem::path hive;
        std::filesystem::path classes;  // empty where the generation has none
    };
    std::vector<User> users;  // Jürgen Groß and Łukasz; before 2000 the second is "Anna"
};

// `root` is made, too.
MadeDisk makeDisk(const std::filesystem::path& root, const DiskPlan& plan);
void writeFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace bromvale::offline
