#include "bromvale-offline/rescue/wire.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace bromvale::offline {
namespace {

constexpr std::size_t kPiece = 65536;

}  // namespace

void WireWriter::number(std::uint64_t number) {
    put({reinterpret_cast<const char*>(&number), sizeof number});
}

void WireWriter::text(std::string_view text) {
    number(text.size());
    put(text);
}

void WireWriter::text(std::u16string_view text) {
    this->text(std::string_view(reinterpret_cast<const char*>(text.data()), text.size() * 2));
}

void WireWriter::put(std::string_view bytes) {
    waiting_.append(bytes);
    if (waiting_.size() >= kPiece) flush();
}

void WireWriter::flush() {
    std::string_view rest = waiting_;
    while (!rest.empty()) {
        const ssize_t written = ::write(pipe_, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) ::_exit(1);
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    waiting_.clear();
}

std::uint64_t WireReader::number() {
    std::uint64_t number = 0;
    take(reinterpret_cast<char*>(&number), sizeof number);
    return number;
}

std::string WireReader::text() {
    std::string text(number(), '\0');
    take(text.data(), text.size());
    return text;
}

std::u16string WireReader::wide() {
    std::u16string text(number() / 2, u'\0');
    take(reinterpret_cast<char*>(text.data()), text.size() * 2);
    return text;
}

void WireReader::take(char* to, std::size_t size) {
    while (size > 0) {
        if (used_ == read_.size()) fill();
        const std::size_t part = std::min(size, read_.size() - used_);
        std::memcpy(to, read_.data() + used_, part);
        used_ += part;
        to += part;
        size -= part;
    }
}

void WireReader::fill() {
    read_.resize(kPiece);
    used_ = 0;
    ssize_t count = 0;
    do {
        count = ::read(pipe_, read_.data(), read_.size());
    } while (count < 0 && errno == EINTR);
    read_.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (read_.empty()) throw std::out_of_range("the answer is cut off");
}

}  // namespace bromvale::offline
