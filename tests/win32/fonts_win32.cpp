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
    const bool coarse = screenDpi() > 120;
    EXPECT_EQ(fontOfFace("MS Sans Serif") == controlFont(), coarse);
    if (!coarse) {
        EXPECT_EQ(faceOf(fontOfFace("MS Sans Serif")), "MS Sans Serif");
    }
}

TEST(Fonts, AFaceThatTheSystemLacksIsTheControls) {
    EXPECT_EQ(fontOfFace("Gibt es nicht"), controlFont());
    EXPECT_EQ(fontOfFace(""), controlFont());
}

}  // namespace
}  // namespace bromvale::testing
