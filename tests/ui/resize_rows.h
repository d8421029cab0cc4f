#pragma once
#include <gtest/gtest.h>

#include <span>

#include "ui/frm_main.h"

namespace bromvale::testing {

// One property that the window's size decides, with its value written out.
struct ResizedTo {
    const char* control;
    int (Control::*property)() const;
    int twips;
};

inline void expectSizes(const FrmMain& form, std::span<const ResizedTo> rows) {
    for (const ResizedTo& row : rows) {
        const Control* control = form.find(row.control);
        ASSERT_NE(control, nullptr) << row.control;
        EXPECT_EQ((control->*row.property)(), row.twips) << row.control;
    }
}

}  // namespace bromvale::testing
