#pragma once

#include "fakes/Calls.h"
#include "platform/Application.h"

#include <cstdio>

namespace fakes {

class FakeApplication final : public platform::Application
{
public:
    explicit FakeApplication(Calls& calls) : calls(calls) {}

    void setPresentationOptions(unsigned options) override
    {
        presentationOptions = options;
        char text[32];
        std::snprintf(text, sizeof text, "0x%X", options);
        calls.push_back(std::string("application setPresentationOptions ") + text);
    }

    void activate(bool ignoringOtherApps) override
    {
        calls.push_back(
            std::string("application activate ") + (ignoringOtherApps ? "true" : "false")
        );
    }

    unsigned presentationOptions = platform::PRESENTATION_DEFAULT;

private:
    Calls& calls;
};

} // namespace fakes
