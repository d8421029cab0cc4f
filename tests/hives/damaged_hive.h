// A hive with each form of everything, and hands that find the bytes of its structures to damage them.
#pragma once

#include <string_view>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/image.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {

// Keys "lf", "lh" (from 1.5 on), "li" and "ri" with five sub keys each, "aä" to "eä", in a list of
// that kind; the last in three parts. "values" has a class name and values of five forms, the second
// security.
MadeHive exampleHive(std::uint32_t minorVersion = 5);

// The bytes of a whole hive, with the places of its structures in the file, as they were at first.
class DamagedHive {
  public:
    explicit DamagedHive(std::string_view bytes) : image_(bytes), hive_(image_.bytes()) {}

    [[nodiscard]] std::size_t cell(Cell cell) const { return hive_.cell(cell).place(); }
    [[nodiscard]] HiveKey key(std::u16string_view path) const {
        return hive_.key(hive_.find(hive_.root(), path));
    }
    [[nodiscard]] std::size_t node(std::u16string_view path) const { return cell(key(path).cell); }
    [[nodiscard]] std::size_t list(std::u16string_view path) const { return cell(key(path).subKeys); }
    [[nodiscard]] std::size_t security(std::u16string_view path) const { return cell(key(path).security); }
    [[nodiscard]] HiveValue valueAt(std::size_t index) const {
        return hive_.value(hive_.values(key(u"values"))[index]);
    }
    [[nodiscard]] std::size_t value(std::size_t index) const { return cell(valueAt(index).cell); }
    [[nodiscard]] std::size_t data(std::size_t index) const { return cell(valueAt(index).data); }

    [[nodiscard]] std::uint32_t at(std::size_t place) const { return image_.bytes().u32(place); }
    [[nodiscard]] std::size_t size() const { return image_.size(); }
    void put(std::size_t place, std::uint32_t number) { image_.write(place, number); }
    void put16(std::size_t place, std::uint16_t number) { image_.write16(place, number); }
    void put(std::size_t place, std::string_view bytes) { image_.write(place, bytes); }
    void cut(std::size_t size) { image_.resize(size); }
    void swap(std::size_t left, std::size_t right) {
        const std::uint32_t number = at(left);
        put(left, at(right));
        put(right, number);
    }
    void finish() { put(base_block::kChecksum, baseBlockChecksum(image_.bytes())); }
    [[nodiscard]] std::string_view bytes() const { return image_.bytes().all(); }

  private:
    HiveImage image_;
    Hive hive_;
};

}  // namespace bromvale::offline
