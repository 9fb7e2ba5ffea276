// The absence of a status area: items exist and are never shown.
#pragma once

#include "platform/StatusBar.h"

namespace platform {

class NoStatusBar final : public StatusBar
{
public:
    double thickness() override { return 22.0; }

    std::unique_ptr<StatusItem> statusItem(double /*length*/) override
    {
        return std::make_unique<Item>();
    }

private:
    class Item final : public StatusItem
    {
    public:
        bool isShown() override { return false; }

        std::optional<Rect> frame() override { return std::nullopt; }

        void setNeedsDisplay() override {}

        void setMenu(std::vector<StatusMenuEntry> /*entries*/) override {}
    };
};

} // namespace platform
