// The file of a hive in memory: what is written here never reaches the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/offline/hives/bytes.h"

namespace bromvale::offline {

class HiveImage {
  public:
    HiveImage() = default;
    // From bytes that are at hand.
    explicit HiveImage(std::string_view bytes);
    HiveImage(HiveImage&& other) noexcept;
    HiveImage& operator=(HiveImage&& other) noexcept;
    ~HiveImage();

    // Maps a file of the host (UTF-8) for reading; pages that are changed here are copied when they are.
    // Nothing, or why it can't be read (from the system).
    [[nodiscard]] std::optional<std::string> open(const std::string& path);

    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] HiveBytes bytes() const { return HiveBytes(std::string_view(data_, size_)); }

    // Throw HiveDamage beyond the end.
    void write(std::size_t at, std::string_view bytes);
    void write(std::size_t at, std::uint32_t number);
    void write16(std::size_t at, std::uint16_t number);

    // Longer with zeros, or shorter. Throws std::bad_alloc.
    void resize(std::size_t size);

  private:
    [[nodiscard]] bool reserve(std::size_t size);
    void release();

    char* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t reserved_ = 0;
};

}  // namespace bromvale::offline
