#include "platform/controls/image_list.h"

#include "base/failure.h"
#include "platform/screen.h"

namespace bromvale {
namespace {

template <class Images>
const auto& imageAt(const Images& images, int index) {
    if (index < 1 || index > static_cast<int>(images.size())) raise(Failure::kIndexOutOfBounds);
    return images[static_cast<std::size_t>(index - 1)];
}

}  // namespace

const std::string& ImageList::key(int index) const {
    return imageAt(images_, index).key;
}

int ImageList::resourceId(int index) const {
    return imageAt(images_, index).resourceId;
}

IconHandle ImageList::icon(int index) const {
    return loadResourceIcon(resourceId(index), systemScale().scaled(size_));
}

void Picture::setImage(const ImageList* images, int index) {
    if (images_ == images && index_ == index) return;
    images_ = images;
    index_ = index;
    notify(Property::Value);
}

}  // namespace bromvale
