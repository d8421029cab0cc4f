#pragma once
#include <algorithm>
#include <string_view>

#include "platform/controls/form.h"

namespace bromvale {

// Unloads a form by its name if it is loaded; asking for the form itself would load it first.
inline void unloadForm(std::string_view name) {
    const auto& forms = loadedForms();
    const auto found =
        std::find_if(forms.begin(), forms.end(), [&](const Form* form) { return form->name() == name; });
    if (found != forms.end()) (*found)->unload();
}

}  // namespace bromvale
