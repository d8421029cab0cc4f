#pragma once
#include "core/attempt.h"

namespace bromvale {

struct ReportAnd {
    Ending ending;
    Tags tags;
    std::int32_t style = kStyleExclamation;
    std::int16_t show = kHide;

    Ending operator()(const Failure& failure) const { return Report{ending, style, show}(tags, failure); }
};

[[nodiscard]] inline ReportAnd reportAndGoOn(Tags tags) {
    return {Ending::Next, tags};
}

}  // namespace bromvale
