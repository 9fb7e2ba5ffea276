// A question that may never be answered: asked on a thread of its own, which is left behind when
// the answer takes longer than the caller waits. Without a thread to ask on there is no answer.
#pragma once

#include "linux/process/Aside.h"

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace dbus {

/// The question must own what it uses.
template <typename Question>
std::optional<std::invoke_result_t<Question>>
within(std::chrono::milliseconds time, Question question)
{
    using Answer = std::invoke_result_t<Question>;
    auto promise = std::make_shared<std::promise<Answer>>();
    std::future<Answer> answer = promise->get_future();
    const bool asked = process::runAside([question = std::move(question), promise] {
        promise->set_value(question());
    });
    if (!asked || answer.wait_for(time) != std::future_status::ready) {
        return std::nullopt;
    }
    return answer.get();
}

} // namespace dbus
