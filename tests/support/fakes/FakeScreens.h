#pragma once

#include "platform/Screens.h"

namespace fakes {

/// One screen, until told otherwise; the first of the list is the main screen.
class FakeScreens final : public platform::Screens
{
public:
    std::optional<std::vector<platform::Screen>> screens() override { return list; }

    std::optional<platform::Screen> mainScreen() override
    {
        return list.has_value() && !list->empty() ? std::optional(list->front()) : std::nullopt;
    }

    static platform::Screen screen(int index)
    {
        return {"screen-" + std::to_string(index), {index * 1280, 0, 1280, 720}};
    }

    std::optional<std::vector<platform::Screen>> list{{screen(0)}};
};

} // namespace fakes
