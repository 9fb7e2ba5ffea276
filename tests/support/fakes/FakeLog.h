// Keeps the lines of both streams in their order. One thread.
#pragma once

#include "platform/Log.h"

#include <string>
#include <vector>

namespace fakes {

class FakeLog final : public platform::Log
{
public:
    void line(std::string_view text) override { lines.emplace_back(text); }

    void diagnostic(std::string_view text) override { diagnostics.emplace_back(text); }

    std::vector<std::string> lines;
    std::vector<std::string> diagnostics;
};

} // namespace fakes
