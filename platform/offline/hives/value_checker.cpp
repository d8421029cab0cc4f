#include "platform/offline/hives/value_checker.h"

#include <algorithm>

namespace bromvale::offline {

void ValueChecker::checkValues(HiveBytes key) {
    namespace at = key_node;
    // What stands in place of the number is a handle, and there are no values.
    if ((key.u16(at::kFlags) & at::kFlagPredefined) != 0) return;
    const std::uint32_t count = key.u32(at::kValueCount);
    const Cell offset = key.u32(at::kValues);
    if (count == 0) {
        if (offset != kNil) addFault(check_, key.place(), "a key without values has a list of them");
        return;
    }
    const auto list = cells_.claim(offset, "a list of values");
    if (!list) return;
    static_cast<void>(list->part(0, std::size_t{count} * 4));
    Longest longest;
    for (std::size_t i = 0; i < count; ++i) checkValue(list->u32(i * 4), longest);
    if (longest.name > key.u32(at::kLongestValueName))
        addFault(check_, key.place(), "a value's name is longer than its key's longest");
    if (longest.data > key.u32(at::kLongestData))
        addFault(check_, key.place(), "a value's data is longer than its key's longest");
}

void ValueChecker::checkValue(Cell cell, Longest& longest) {
    namespace at = value_node;
    const auto node = cells_.claim(cell, "a value");
    if (!node) return;
    ++check_.values;
    if (node->text(0, 2) != at::kSignature) {
        addFault(check_, node->place(), "an offset leads to no value");
        return cells_.setIncomplete();
    }
    const std::uint16_t nameSize = node->u16(at::kNameSize);
    const bool oneByte = (node->u16(at::kFlags) & at::kFlagOneByteName) != 0;
    static_cast<void>(node->text(at::kName, nameSize));
    if (!oneByte && nameSize % 2 != 0)
        addFault(check_, node->place(), "a value's name in UTF-16 has an odd number of bytes");
    const std::uint32_t size = node->u32(at::kDataSize);
    longest.name = std::max(longest.name, std::uint32_t{nameSize} * (oneByte ? 2 : 1));
    longest.data = std::max(longest.data, size & ~at::kDataInside);
    checkData(*node, size);
}

void ValueChecker::checkData(HiveBytes value, std::uint32_t size) {
    namespace at = value_node;
    if ((size & at::kDataInside) != 0) {
        if ((size & ~at::kDataInside) > 4)
            addFault(check_, value.place(), "a value's own field holds more than four bytes");
        return;
    }
    const Cell offset = value.u32(at::kData);
    if (size == 0) {
        if (offset != kNil) addFault(check_, value.place(), "a value without data has a cell for it");
        return;
    }
    const auto data = cells_.claim(offset, "a value's data");
    if (!data) return;
    if (size > big_data::kPieceSize && minorVersion_ >= big_data::kFromMinorVersion)
        checkBigData(*data, size);
    else
        checkHolds(*data, size);
}

void ValueChecker::checkBigData(HiveBytes head, std::uint32_t size) {
    if (head.text(0, 2) != big_data::kSignature) {
        addFault(check_, head.place(), "long data has no list of pieces");
        return cells_.setIncomplete();
    }
    const std::size_t count = head.u16(big_data::kCount);
    const auto pieces = cells_.claim(head.u32(big_data::kPieces), "a list of pieces of data");
    if (!pieces) return;
    std::size_t left = size;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t expected = std::min<std::size_t>(left, big_data::kPieceSize);
        left -= expected;
        if (const auto piece = cells_.claim(pieces->u32(i * 4), "a piece of data"))
            checkHolds(*piece, expected);
    }
    if (count != (std::size_t{size} + big_data::kPieceSize - 1) / big_data::kPieceSize)
        addFault(check_, head.place(), "long data has too few pieces or too many");
}

void ValueChecker::checkHolds(HiveBytes data, std::size_t size) {
    if (!data.holds(0, size)) addFault(check_, data.place(), "data is longer than its cell");
}

}  // namespace bromvale::offline
