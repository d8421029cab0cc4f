#include "platform/offline/network/http_get.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "base/forwarding.h"
#include "platform/offline/locale/code_page.h"

namespace bromvale::offline {
namespace {

constexpr std::string_view kScheme = "http://";
constexpr std::size_t kLongestHead = 65536;  // of a line between chunks, too

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
    while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
    return text;
}

bool startsWithNoCase(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && equalNoCase(text.substr(0, start.size()), start);
}

template <class Number>
bool toWhole(std::string_view text, Number& number, int base = 10) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return result.ec == std::errc() && result.ptr != text.data();
}

std::string requestFor(const WebAddress& address, std::string_view agent) {
    std::string request =
        "GET " + address.path + " HTTP/1.1\r\nAccept: */*\r\nHost: " + address.hostAndPort();
    request.append("\r\nUser-Agent: ").append(agent).append("\r\nConnection: close\r\n\r\n");
    return request;
}

}  // namespace

std::string WebAddress::hostAndPort() const {
    return port == 80 ? host : host + ":" + std::to_string(port);
}

std::optional<WebAddress> webAddress(std::string_view url) {
    url = trimmed(url);
    if (!startsWithNoCase(url, kScheme)) return std::nullopt;
    url.remove_prefix(kScheme.size());
    const std::size_t end = std::min(url.find_first_of("/?#"), url.size());
    WebAddress address;
    const std::string_view place = url.substr(0, end);
    const std::size_t colon = std::min(place.find(':'), place.size());
    address.host = place.substr(0, colon);
    if (colon < place.size() && !toWhole(place.substr(colon + 1), address.port)) return std::nullopt;
    const bool possible = !address.host.empty() && address.port > 0 && address.port < 65536 &&
                          address.host.find_first_of(" \r\n\t") == std::string::npos;
    if (!possible) return std::nullopt;
    address.path = url.substr(end);
    if (!address.path.starts_with('/')) address.path.insert(0, "/");
    for (std::size_t at = 0; (at = address.path.find(' ', at)) != std::string::npos;)
        address.path.replace(at, 1, "%20");
    return address;
}

std::unique_ptr<HttpGet> HttpGet::open(std::string_view url, std::string_view agent, int patience,
                                       const Connect& connect) {
    std::string next(url);
    const Deadline opening(patience);
    for (int followed = 0; followed <= kMostForwardings; ++followed) {
        const std::optional<WebAddress> address = webAddress(next);
        if (!address) return nullptr;
        std::unique_ptr<HttpGet> get(new HttpGet(connect(address->host, address->port), patience, opening));
        if (!get->ask(requestFor(*address, agent))) return nullptr;
        if (!isForwarding(get->status_) || get->location_.empty()) return get;
        next = forwardedAddress(next, get->location_);
    }
    return nullptr;
}

bool HttpGet::ask(std::string_view request) {
    using State = ByteStream::State;
    if (stream_->state(silence_.left()) != State::Connected && stream_->state(0) != State::ClosedByPeer)
        return false;
    if (!stream_->send(request, silence_.left())) return false;
    do {
        if (!readHead()) return false;
    } while (status_ >= 100 && status_ < 200);
    return true;
}

bool HttpGet::readHead() {
    std::string line;
    left_.reset();
    chunked_ = false;
    location_.clear();
    if (!readHeadLine(line) || !startsWithNoCase(line, "HTTP/")) return false;
    const std::size_t blank = std::min(line.find(' '), line.size() - 1);
    if (!toWhole(std::string_view(line).substr(blank + 1), status_)) return false;
    while (readHeadLine(line)) {
        if (line.empty()) {
            if (!chunked_) length_ = left_;
            return !chunked_ || nextChunk();
        }
        takeField(line);
    }
    return false;
}

// All heads of an answer together have their limit, the preliminary ones too.
bool HttpGet::readHeadLine(std::string& line) {
    if (!readLine(line)) return false;
    headSize_ += line.size() + 1;
    return headSize_ <= kLongestHead;
}

void HttpGet::takeField(std::string_view line) {
    const std::size_t colon = std::min(line.find(':'), line.size());
    const std::string_view name = trimmed(line.substr(0, colon));
    const std::string_view value = trimmed(line.substr(std::min(colon + 1, line.size())));
    std::uint64_t length = 0;
    if (equalNoCase(name, "Content-Length") && toWhole(value, length) && !chunked_) left_ = length;
    if (equalNoCase(name, "Transfer-Encoding") && upper(value).find("CHUNKED") != std::string::npos)
        chunked_ = true;
    if (equalNoCase(name, "Location")) location_ = value;
}

// As ByteStream::receive.
long HttpGet::more() {
    std::array<char, 8192> buffer;
    const long got = stream_->receive(buffer.data(), buffer.size(), silence_.left());
    if (got > 0) received_.append(buffer.data(), static_cast<std::size_t>(got));
    return got;
}

bool HttpGet::readLine(std::string& line) {
    std::size_t end = 0;
    while ((end = received_.find('\n')) == std::string::npos) {
        if (received_.size() > kLongestHead || more() <= 0) return false;
    }
    line = received_.substr(0, end);
    received_.erase(0, end + 1);
    if (line.ends_with('\r')) line.pop_back();
    return true;
}

// Each chunk says its length in a line of its own; the last one has none.
bool HttpGet::nextChunk() {
    std::string line;
    std::uint64_t length = 0;
    if (!readLine(line) || !toWhole(line, length, 16)) return false;
    left_ = length;
    ended_ = length == 0;
    return true;
}

long HttpGet::readSome(char* buffer, std::size_t size) {
    const long got = received_.empty() ? more() : 1;
    if (got <= 0) return got;
    const std::size_t count =
        std::min({size, received_.size(), static_cast<std::size_t>(left_.value_or(size))});
    std::memcpy(buffer, received_.data(), count);
    received_.erase(0, count);
    if (left_) *left_ -= count;
    return static_cast<long>(count);
}

// What follows when a body or a chunk is through: the end, or one more chunk.
bool HttpGet::nextPart() {
    std::string lineEnd;
    ended_ = !chunked_;
    return ended_ || (readLine(lineEnd) && nextChunk());
}

bool HttpGet::read(char* buffer, std::size_t size, std::size_t& got) {
    const Deadline patience(patience_);
    got = 0;
    silence_ = patience;
    while (got < size && !ended_) {
        if (left_ == std::uint64_t{0}) {
            if (!nextPart()) return false;
            continue;
        }
        const long piece = readSome(buffer + got, size - got);
        if (piece < 0 || (piece == 0 && left_)) return false;
        ended_ = piece == 0;
        got += static_cast<std::size_t>(piece);
        if (patience.left() == 0) break;
        silence_ = Deadline(patience_);
    }
    return true;
}

}  // namespace bromvale::offline
