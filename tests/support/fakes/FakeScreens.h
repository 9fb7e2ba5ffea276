// One screen, until told otherwise; the first of the list is the main screen. One thread.
#pragma once

#include "platform/Screens.h"

#include <utility>

namespace fakes {

class FakeScreens final : public platform::Screens
{
public:
    std::optional<std::vector<platform::Screen>> screens() override { return list; }

    std::optional<platform::Screen> mainScreen() override
    {
        return list.has_value() && !list->empty() ? std::optional(list->front()) : std::nullopt;
    }

    void observe(std::function<void()> newHandler) override { handler = std::move(newHandler); }

    /// Another arrangement, of which the observer hears.
    void arrange(const std::optional<std::vector<platform::Screen>>& screens)
    {
        if (std::exchange(list, screens) != screens && handler) {
            const auto listener = handler;
            listener();
        }
    }

    static platform::Screen screen(int index)
    {
        return {"screen-" + std::to_string(index), {index * 1280, 0, 1280, 720}};
    }

    std::optional<std::vector<platform::Screen>> list{{screen(0)}};

private:
    std::function<void()> handler;
};

} // namespace fakes
