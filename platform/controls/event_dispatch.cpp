#include <new>
#include <string>
#include <utility>

#include "platform/events.h"

namespace bromvale {
namespace {

std::function<void(const Failure&)> unhandledFailure;

void tellUnhandled(const Failure& failure) {
    if (unhandledFailure) unhandledFailure(failure);
}

}  // namespace

void setUnhandledFailure(std::function<void(const Failure&)> handler) {
    unhandledFailure = std::move(handler);
}

void dispatchUserEvent(const std::function<void()>& handler) {
    if (!handler) return;
    try {
        handler();
    } catch (const Failure& failure) {
        tellUnhandled(failure);
    } catch (const std::bad_alloc&) {
        tellUnhandled({7, std::string(failureText(7))});
    }
}

}  // namespace bromvale
