#pragma once
#include <string>
#include <vector>

#include "ui/frm_error.h"
#include "ui/frm_main.h"

namespace bromvale::testing {

// A row of a form's tables with the control that it is about.
struct FormRow {
    std::string name;
    ControlKind kind;
    std::string container;  // empty: the form
    RowFacts facts;
};

template <class Owner>
void appendRows(std::vector<FormRow>& all, Owner& owner) {
    for (const Row<Owner>& row : Owner::rows()) {
        const auto [control, container] = row.controls(owner);
        all.push_back({control->name(), control->kind(), container ? container->name() : "", row});
    }
}

// In the order of the tables.
inline std::vector<FormRow> rowsOf(FrmMain& form) {
    std::vector<FormRow> all;
    appendRows(all, form);
    appendRows(all, form.scan);
    appendRows(all, form.backup);
    appendRows(all, form.bugReport);
    appendRows(all, form.programs);
    appendRows(all, form.options);
    appendRows(all, form.cleanup);
    return all;
}

inline std::vector<FormRow> rowsOf(FrmError& form) {
    std::vector<FormRow> all;
    appendRows(all, form);
    return all;
}

}  // namespace bromvale::testing
