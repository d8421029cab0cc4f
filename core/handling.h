#pragma once
#include "core/attempt.h"
#include "core/log.h"

namespace bromvale {

// What most routines do about a failure: report it without words of their own, then go on or leave.
struct ReportAnd {
    Ending ending;
    Tags tags;
    std::int32_t style = kStyleExclamation;
    std::int16_t show = kHide;

    Ending operator()(const Failure& failure) const {
        ErrHandle(tags.modul, tags.funktion, "", failure.number, failure.description, style, show);
        return ending;
    }
};

[[nodiscard]] inline ReportAnd reportAndGoOn(Tags tags) {
    return {Ending::Next, tags};
}

}  // namespace bromvale
