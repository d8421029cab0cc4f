#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// On a 64-bit Windows the system folder is two: a program of 32 bits finds SysWOW64 under the name System32,
// one of 64 bits the folder itself. Keys that both kinds of program share name files of either. So a file
// that isn't found below System32 may be there in the other view, as a program of the other kind sees it.
//
// Ask only where a file was not found. Texts with marks (text.h) are no paths here.

// The other view, for as long as it lives; calls for files go by path() meanwhile. No library may be loaded
// in it.
class OtherView {
  public:
    // A whole path with a drive letter, as registry texts hold it: any case, slashes of both kinds, doubled
    // ones.
    explicit OtherView(std::string_view path);
    OtherView(const OtherView&) = delete;
    OtherView& operator=(const OtherView&) = delete;
    ~OtherView();

    // The name of the path's file in the other view. Empty where there is none: the path isn't below
    // System32, or this is no 64-bit Windows.
    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    std::string path_;
    void* redirection_ = nullptr;
    bool redirectionIsOff_ = false;
};

// Files and folders alike, wildcards work, as in a search.
[[nodiscard]] bool existsInOtherView(std::string_view path);

// The system folder's own name, without a backslash behind it.
[[nodiscard]] std::string systemFolderName();

}  // namespace bromvale
