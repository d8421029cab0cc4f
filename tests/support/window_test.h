#pragma once
// The main window on a test machine, as the tests of its pages see it.
#include <string>
#include <vector>

#include "tests/support/test_machine.h"
#include "ui/frm_main.h"

namespace bromvale::testing {

using Texts = std::vector<std::string>;

// Buttons of the mouse.
inline constexpr int kLeft = 1;
inline constexpr int kRight = 2;

// The first column of a list.
inline Texts rowTexts(const ListView& list) {
    Texts result;
    for (int row = 1; row <= list.count(); ++row) result.push_back(list.item(row).text());
    return result;
}

class WindowTest : public TestMachine {
  protected:
    WindowTest() { fillState(); }

    static FrmMain& form() { return frmMain(); }

    // Texts of the boxes shown so far.
    [[nodiscard]] Texts asked() const {
        Texts result;
        for (const ShownBox& box : boxes()) result.push_back(box.text);
        return result;
    }
    // Records of one routine without its tags.
    [[nodiscard]] Texts logOf(const std::string& routine) {
        Texts lines;
        for (const std::string& line : logLines()) {
            const std::size_t at = line.find("; " + routine + "; ");
            if (at != std::string::npos) lines.push_back(line.substr(at + routine.size() + 4));
        }
        return lines;
    }
};

}  // namespace bromvale::testing
