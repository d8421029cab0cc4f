#pragma once
#include <memory>
#include <type_traits>
#include <utility>

namespace bromvale {

template <class Signature>
class FunctionRef;

// A callable that somebody else keeps, to be called while that one lives: no copy and no memory. What takes
// one needs no template of its own for each caller.
template <class Result, class... Arguments>
class FunctionRef<Result(Arguments...)> {
  public:
    template <class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef> &&
             // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): the line above excludes its own kind
             !std::is_function_v<std::remove_reference_t<Callable>>) FunctionRef(Callable&& callable)
        : callable_(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
          call_([](void* target, Arguments... arguments) -> Result {
              return (*static_cast<std::remove_reference_t<Callable>*>(target))(
                  std::forward<Arguments>(arguments)...);
          }) {}

    FunctionRef(Result (*function)(Arguments...))
        : callable_(reinterpret_cast<void*>(function)),
          call_([](void* target, Arguments... arguments) -> Result {
              return reinterpret_cast<Result (*)(Arguments...)>(target)(
                  std::forward<Arguments>(arguments)...);
          }) {}

    Result operator()(Arguments... arguments) const {
        return call_(callable_, std::forward<Arguments>(arguments)...);
    }

  private:
    void* callable_;
    Result (*call_)(void*, Arguments...);
};

}  // namespace bromvale
