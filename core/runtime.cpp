#include "core/runtime.h"

namespace bromvale {
namespace {

Failure& stored() {
    static Failure failure;
    return failure;
}

}  // namespace

const Failure& lastFailure() {
    return stored();
}

void setLastFailure(const Failure& failure) {
    stored() = failure;
}

void clearLastFailure() {
    stored() = Failure{};
}

}  // namespace bromvale
