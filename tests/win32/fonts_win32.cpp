// Which face a control gets that names one.
#include <gtest/gtest.h>

#include "platform/win32/windows/metrics.h"

namespace bromvale::testing {
namespace {

std::string faceOf(HFONT font) {
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ old = SelectObject(screen, font);
    char face[LF_FACESIZE] = "";
    GetTextFaceA(screen, LF_FACESIZE, face);
    SelectObject(screen, old);
    ReleaseDC(nullptr, screen);
    return face;
}

TEST(Fonts, AFaceOfPicturesIsUsedUpTo120DotsAnInch) {
    for (const int dpi : {96, 120, 144, 288}) {
        const Scale scale(dpi);
        const bool coarse = dpi > 120;
        EXPECT_EQ(fontOfFace("MS Sans Serif", scale) == controlFont(scale), coarse) << dpi;
        if (!coarse) {
            EXPECT_EQ(faceOf(fontOfFace("MS Sans Serif", scale)), "MS Sans Serif") << dpi;
        }
    }
}

TEST(Fonts, AFaceThatTheSystemLacksIsTheControls) {
    const Scale scale(96);
    EXPECT_EQ(fontOfFace("Gibt es nicht", scale), controlFont(scale));
    EXPECT_EQ(fontOfFace("", scale), controlFont(scale));
}

}  // namespace
}  // namespace bromvale::testing
