// Bundles and resources that are set beforehand; any other path cannot be opened. One thread.
#pragma once

#include "platform/Bundles.h"

#include <map>

namespace fakes {

class FakeBundles final : public platform::Bundles
{
public:
    platform::Bundle mainBundle() override { return main; }

    std::optional<platform::Bundle> open(const std::string& path) override
    {
        const auto found = bundles.find(path);
        return found == bundles.end() ? std::nullopt : std::optional(found->second);
    }

    std::optional<std::string>
    pathForResource(const std::string& name, const std::string& type) override
    {
        const auto found = resources.find(name + "." + type);
        return found == resources.end() ? std::nullopt : std::optional(found->second);
    }

    platform::Bundle main{
        "/opt/Tarvel.app",
        std::string("Tarvel"),
        std::string("Tarvel"),
        std::string("com.quorvent.Tarvel")};
    std::map<std::string, platform::Bundle> bundles;
    std::map<std::string, std::string> resources; // "Help.html" and the like -> path
};

} // namespace fakes
