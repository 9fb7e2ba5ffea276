// Calls a listener, on the thread of the caller; one that is unset is dropped. What is called is a
// copy, so that a listener may replace itself, or end what holds it, while it runs.
#pragma once

#include <functional>
#include <type_traits>
#include <utility>

namespace platform {

template <typename... Parameters>
void call(
    std::function<void(Parameters...)> listener, std::type_identity_t<Parameters>... arguments
)
{
    if (listener) {
        listener(std::forward<Parameters>(arguments)...);
    }
}

} // namespace platform
