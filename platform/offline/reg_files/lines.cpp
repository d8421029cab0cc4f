#include "platform/offline/reg_files/lines.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {

namespace {

constexpr std::size_t kWindow = std::size_t{32} * 1024;
constexpr std::size_t kDecodedWindow = kWindow / 2 * 3;  // a character of two bytes may need three

const char* findByte(const char* from, const char* to, char byte) {
    if (from == to) return nullptr;
    return static_cast<const char*>(std::memchr(from, byte, static_cast<std::size_t>(to - from)));
}

char16_t unitAt(const char* bytes) {
    return static_cast<char16_t>(static_cast<unsigned char>(bytes[0]) | static_cast<unsigned char>(bytes[1])
                                                                            << 8);
}

// Four ASCII characters at once: nearly all of an export is ASCII.
bool narrowFour(const char* from, char* to) {
    std::uint64_t units = 0;
    std::memcpy(&units, from, sizeof units);
    if ((units & 0xFF80FF80FF80FF80u) != 0) return false;
    units |= units >> 8;
    units = (units & 0xFFFFu) | (units >> 16 & 0xFFFF0000u);
    const auto packed = static_cast<std::uint32_t>(units);
    std::memcpy(to, &packed, sizeof packed);
    return true;
}

}  // namespace

RegFileLines::RegFileLines(Read read) : read_(std::move(read)), raw_(kWindow), text_(kDecodedWindow) {
    at_ = end_ = searched_ = text_.data();
}

std::size_t RegFileLines::decode(std::size_t bytes, char* to) {
    const char* from = raw_.data();
    const char* const stop = from + bytes;
    if (!started_) {
        started_ = true;
        wide_ = bytes >= 2 && unitAt(from) == 0xFEFF;
        if (wide_) from += 2;
    }
    if (!wide_) {
        std::memcpy(to, from, bytes);
        return bytes;
    }
    char* out = to;
    while (stop - from >= 8) {
        if (narrowFour(from, out)) {
            from += 8;
            out += 4;
        } else {
            for (int i = 0; i < 4; ++i, from += 2) out = putUnit(out, unitAt(from));
        }
    }
    for (; stop - from >= 2; from += 2) out = putUnit(out, unitAt(from));
    oddByte_ = from != stop;
    return static_cast<std::size_t>(out - to);
}

// Moves what is left of the window to its front and appends the next piece of the file.
bool RegFileLines::refill() {
    if (ended_) return false;
    const auto left = static_cast<std::size_t>(end_ - at_);
    const auto searched = static_cast<std::size_t>(searched_ - at_);
    std::vector<char> larger;
    if (left + kDecodedWindow > text_.size()) larger.resize((left + kDecodedWindow) * 2);
    char* const front = larger.empty() ? text_.data() : larger.data();
    if (left > 0) std::memmove(front, at_, left);
    if (!larger.empty()) text_ = std::move(larger);

    const std::size_t bytes = read_(raw_.data(), raw_.size());
    if (bytes < raw_.size()) ended_ = true;
    at_ = front;
    end_ = front + left + (bytes > 0 ? decode(bytes, front + left) : 0);
    searched_ = at_ + searched;
    return true;
}

// The first CR or LF of the window, null when there is none.
const char* RegFileLines::lineEnd() {
    if (lineFeed_ == nullptr || lineFeed_ < at_) {
        lineFeed_ = findByte(searched_ < at_ ? at_ : searched_, end_, '\n');
        searched_ = lineFeed_ == nullptr ? end_ : lineFeed_;
    }
    const char* carriageReturn = findByte(at_, lineFeed_ == nullptr ? end_ : lineFeed_, '\r');
    return carriageReturn != nullptr ? carriageReturn : lineFeed_;
}

bool RegFileLines::next(Line& line) {
    const char* stop = lineEnd();
    // A CR at the window's end may be half of a CRLF.
    while (stop == nullptr || (*stop == '\r' && stop + 1 == end_)) {
        lineFeed_ = nullptr;
        if (!refill()) break;
        stop = lineEnd();
    }
    if (at_ == end_) return false;
    if (stop == nullptr) stop = end_;
    line.text = {at_, static_cast<std::size_t>(stop - at_)};
    if (!wide_ && !isAscii(line.text)) {
        converted_ = storedFromWide(wideFromAnsi(line.text));
        line.text = converted_;
    }
    const char* after = stop;
    if (after != end_ && *after++ == '\r' && after != end_ && *after == '\n') ++after;
    line.ending = {stop, static_cast<std::size_t>(after - stop)};
    at_ = after;
    ++number_;
    return true;
}

}  // namespace bromvale::offline
