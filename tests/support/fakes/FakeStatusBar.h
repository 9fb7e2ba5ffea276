// A status area in memory. It keeps the latest item at hand, which is drawn and clicked by hand.
// Records every call; outlives its items. One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/StatusBar.h"

#include <utility>

namespace fakes {

class FakeStatusBar final : public platform::StatusBar
{
public:
    explicit FakeStatusBar(Calls& calls) : calls(calls) {}

    class Item final : public platform::StatusItem
    {
    public:
        Item(FakeStatusBar& owner, double length) : length(length), owner(owner) {}

        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;
        Item(Item&&) = delete;
        Item& operator=(Item&&) = delete;

        ~Item() override { owner.item = nullptr; }

        bool isShown() override { return owner.shown; }

        std::optional<platform::Rect> frame() override
        {
            return owner.shown ? owner.frame : std::nullopt;
        }

        void setNeedsDisplay() override
        {
            owner.calls.push_back("statusItem setNeedsDisplay");
            needsDisplay = true;
        }

        void setMenu(std::vector<platform::StatusMenuEntry> entries) override
        {
            menu = std::move(entries);
        }

        /// Draws as the desktop would.
        platform::StatusItemLook draw()
        {
            needsDisplay = false;
            return onDraw ? onDraw() : platform::StatusItemLook{};
        }

        double length;
        bool needsDisplay = false;
        std::vector<platform::StatusMenuEntry> menu;

    private:
        FakeStatusBar& owner;
    };

    std::unique_ptr<platform::StatusItem> statusItem(double length) override
    {
        calls.push_back("statusBar statusItem");
        auto created = std::make_unique<Item>(*this, length);
        item = created.get();
        return created;
    }

    bool shown = true;
    std::optional<platform::Rect> frame = platform::Rect{600, 0, 22, 22};
    Item* item = nullptr; // the latest one that lives

private:
    Calls& calls;
};

} // namespace fakes
