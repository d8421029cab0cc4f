#include "core/routine.h"

#include <new>
#include <optional>
#include <string>

namespace bromvale {
namespace {

// Empty where the statement went well.
std::optional<Failure> failureOf(FunctionRef<void()> statement) {
    try {
        statement();
        return std::nullopt;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::bad_alloc&) {
        return Failure{7, std::string(failureText(7))};
    }
}

}  // namespace

bool attempt(FunctionRef<Ending(const Failure&)> handler, FunctionRef<void()> statement) {
    for (;;) {
        const std::optional<Failure> failure = failureOf(statement);
        if (!failure) return true;
        setLastFailure(*failure);
        const Ending ending = handler(*failure);
        clearLastFailure();
        if (ending == Ending::Next) return true;
        if (ending == Ending::Leave) return false;
    }
}

void quietly(FunctionRef<void()> statement) {
    attempt([](const Failure&) { return Ending::Next; }, statement);
}

Ending Report::operator()(const Tags& tags, const Failure& failure) const {
    ErrHandle(tags.modul, tags.funktion, text, failure.number, failure.description, style, show);
    return ending;
}

}  // namespace bromvale
