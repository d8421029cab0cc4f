#pragma once
#include <vector>

#include "platform/controls/control_of.h"

namespace bromvale {

// Pictures from the program's resources, counted from 1, each with a text key.
class ImageList : public ControlOf<ImageList, ControlKind::ImageList> {
  public:
    ImageList(Form* form, std::string_view name, int size) : ControlOf(form, name), size_(size) {}
    // Edge of a picture in pixels at 96 DPI: 16 or 32.
    [[nodiscard]] int size() const { return size_; }
    void add(std::string_view key, int resourceId) { images_.push_back({std::string(key), resourceId}); }
    void clear() { images_.clear(); }
    [[nodiscard]] int count() const { return static_cast<int>(images_.size()); }
    // Failure 35600 for an index out of range.
    [[nodiscard]] const std::string& key(int index) const;
    [[nodiscard]] int resourceId(int index) const;
    // The icon's handle in the system's scaling, for the tray record. Lives as long as the process.
    [[nodiscard]] IconHandle icon(int index) const;

  private:
    struct Image {
        std::string key;
        int resourceId;
    };
    std::vector<Image> images_;
    int size_;
};

// Provider: the handle of an icon of the program's resources, as large as one was drawn that is not larger
// than so many pixels. Offline there is no picture behind it: the number tells resource and size.
[[nodiscard]] IconHandle loadResourceIcon(int resourceId, int pixels);

// Shows one picture of an image list.
class Picture : public ControlOf<Picture, ControlKind::Picture> {
  public:
    using ControlOf::ControlOf;
    // Index 0 for no picture.
    void setImage(const ImageList* images, int index);
    [[nodiscard]] const ImageList* images() const { return images_; }
    [[nodiscard]] int index() const { return index_; }

  private:
    const ImageList* images_ = nullptr;
    int index_ = 0;
};

}  // namespace bromvale
