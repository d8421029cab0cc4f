#pragma once
#include <string>
#include <string_view>

#include "bromvale-offline/transcript.h"
#include "platform/controls.h"

namespace bromvale::offline {

// Null where no loaded form has the name.
[[nodiscard]] Form* findForm(std::string_view name);
// "name", sought in the main window first, or "form.name". A form's own name gives the form.
[[nodiscard]] Control* findControl(std::string_view name);

// What the control shows: text, value, panels or caption.
[[nodiscard]] std::string valueText(Control& control);
// A line a row, columns separated by tabs.
void printRows(const ListView& list, Transcript& transcript);
// The window and its visible controls: kind, place in twips, enabled or not, what they show.
void printWindow(const Form& form, Transcript& transcript);

}  // namespace bromvale::offline
