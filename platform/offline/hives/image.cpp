#include "platform/offline/hives/image.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

namespace bromvale::offline {
namespace {

constexpr std::size_t kHostPage = 4096;

std::size_t wholePages(std::size_t size) {
    return (std::max<std::size_t>(size, 1) + kHostPage - 1) / kHostPage * kHostPage;
}

}  // namespace

HiveImage::HiveImage(std::string_view bytes) {
    resize(bytes.size());
    if (!bytes.empty()) std::memcpy(data_, bytes.data(), bytes.size());
}

HiveImage::HiveImage(HiveImage&& other) noexcept {
    *this = std::move(other);
}

HiveImage& HiveImage::operator=(HiveImage&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(reserved_, other.reserved_);
    return *this;
}

HiveImage::~HiveImage() {
    release();
}

void HiveImage::release() {
    if (data_ != nullptr) ::munmap(data_, reserved_);
    data_ = nullptr;
    size_ = 0;
    reserved_ = 0;
}

bool HiveImage::reserve(std::size_t size) {
    void* const memory = ::mmap(nullptr, wholePages(size), PROT_READ | PROT_WRITE,
                                MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) return false;
    data_ = static_cast<char*>(memory);
    reserved_ = wholePages(size);
    return true;
}

std::optional<std::string> HiveImage::open(const std::string& path) {
    const auto problem = [](int number) { return std::optional(std::string(std::strerror(number))); };
    // Reading leaves no trace in the file's times, where the system lets its owner have that.
    constexpr int kHow = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    int file = ::open(path.c_str(), kHow | O_NOATIME);
    if (file < 0 && errno == EPERM) file = ::open(path.c_str(), kHow);
    if (file < 0) return problem(errno);
    struct stat state {};
    int number = ::fstat(file, &state) != 0 ? errno : 0;
    release();
    if (number == 0 && !S_ISREG(state.st_mode)) {
        ::close(file);
        return S_ISDIR(state.st_mode) ? problem(EISDIR) : "it is no plain file";
    }
    const auto size = static_cast<std::size_t>(state.st_size);
    if (number == 0 && size > 0) {
        void* const memory = ::mmap(nullptr, wholePages(size), PROT_READ | PROT_WRITE, MAP_PRIVATE, file, 0);
        if (memory == MAP_FAILED) {
            number = errno;
        } else {
            data_ = static_cast<char*>(memory);
            reserved_ = wholePages(size);
            size_ = size;
        }
    }
    ::close(file);
    return number != 0 ? problem(number) : std::nullopt;
}

void HiveImage::write(std::size_t at, std::string_view bytes) {
    const std::string_view there = this->bytes().text(at, bytes.size());
    if (!there.empty()) std::memcpy(data_ + at, bytes.data(), bytes.size());
}

void HiveImage::write(std::size_t at, std::uint32_t number) {
    write(at, std::string_view(reinterpret_cast<const char*>(&number), sizeof number));
}

void HiveImage::write16(std::size_t at, std::uint16_t number) {
    write(at, std::string_view(reinterpret_cast<const char*>(&number), sizeof number));
}

void HiveImage::resize(std::size_t size) {
    if (size > reserved_) {
        HiveImage larger;
        if (!larger.reserve(size)) throw std::bad_alloc();
        if (size_ > 0) std::memcpy(larger.data_, data_, size_);
        larger.size_ = size_;
        *this = std::move(larger);
    }
    if (size < size_) std::memset(data_ + size, 0, size_ - size);
    size_ = size;
}

}  // namespace bromvale::offline
