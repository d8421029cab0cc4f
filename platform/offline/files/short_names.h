// Names of eight characters and three, as Windows makes them for entries that have another name.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace bromvale::offline {

// Whether the machine's code page holds the name exactly, so that an ANSI path can name it.
[[nodiscard]] bool isReachableByAnsi(std::string_view stored);
// Whether the name itself is one of eight and three.
[[nodiscard]] bool isEightAndThree(std::string_view stored);

// Whether a folder of Windows may know `entry` by `name`, as far as the letters tell: for a disk whose own
// short names are not at hand. An entry of eight and three has no other one.
[[nodiscard]] bool mayBeShortNameOf(std::string_view name, std::string_view entry);

// The short names of one folder. A name keeps its short one until it is forgotten.
class ShortNames {
  public:
    using Taken = std::function<bool(std::string_view candidate)>;

    // Empty for a name that needs none. `taken` tells which names the folder's entries have themselves.
    const std::string& of(std::string_view stored, const Taken& taken);
    // The name to which the short one leads, empty where there is none.
    [[nodiscard]] std::string longNameOf(std::string_view shortName) const;
    void forget(std::string_view stored);

  private:
    std::map<std::string, std::string, std::less<>> shortNames_;
    std::map<std::string, std::string, std::less<>> longNames_;
};

}  // namespace bromvale::offline
