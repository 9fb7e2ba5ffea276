// Notices between programs, delivered at once to the observer of their name. Records every post.
// One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/Call.h"
#include "platform/DistributedNotifications.h"

#include <map>
#include <utility>

namespace fakes {

class FakeDistributedNotifications final : public platform::DistributedNotifications
{
public:
    explicit FakeDistributedNotifications(Calls& calls) : calls(calls) {}

    void post(const std::string& name, const std::string& object) override
    {
        calls.push_back("distributedNotifications post " + name + " " + object);
        const auto found = handlers.find(name);
        if (found != handlers.end()) {
            platform::call(found->second, name, object);
        }
    }

    void observe(const std::string& name, Handler handler) override
    {
        handlers[name] = std::move(handler);
    }

private:
    Calls& calls;
    std::map<std::string, Handler> handlers;
};

} // namespace fakes
