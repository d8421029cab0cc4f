#pragma once
#include "core/attempt.h"
#include "core/log.h"

namespace bromvale {

// The handler of most routines here: one record in the log, then on with the next statement.
[[nodiscard]] inline auto reportAndGoOn(Tags tags) {
    return [tags](const Failure& failure) {
        ErrHandle(tags.modul, tags.funktion, "", failure.number, failure.description, kStyleExclamation,
                  kHide);
        return Ending::Next;
    };
}

}  // namespace bromvale
