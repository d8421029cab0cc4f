#pragma once
#include <array>

#include "ui/frm_main.h"

namespace bromvale {

// The pages in the order in which they are switched.
[[nodiscard]] inline std::array<Frame*, 6> pages(FrmMain& form) {
    return {&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame4, &form.Frame5, &form.Frame7};
}

}  // namespace bromvale
