// The program's own side of the desktop: keeps the latest presentation options and records every
// call. One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/Application.h"

#include <sstream>

namespace fakes {

class FakeApplication final : public platform::Application
{
public:
    explicit FakeApplication(Calls& calls) : calls(calls) {}

    void setPresentationOptions(unsigned options) override
    {
        presentationOptions = options;
        std::ostringstream text;
        text << "application setPresentationOptions 0x" << std::hex << std::uppercase << options;
        calls.push_back(text.str());
    }

    void activate(bool ignoringOtherApps) override
    {
        calls.push_back(
            std::string("application activate ") + (ignoringOtherApps ? "true" : "false")
        );
    }

    void bringForward(std::uintptr_t /*nativeWindow*/) override
    {
        calls.push_back("application bringForward");
    }

    unsigned presentationOptions = platform::PRESENTATION_DEFAULT;

private:
    Calls& calls;
};

} // namespace fakes
