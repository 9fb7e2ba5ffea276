// Bundles: the entries of the catalogue, and the folders in which this program and its helper
// stand. Any thread.
#pragma once

#include "linux/xdg/ApplicationCatalogue.h"
#include "platform/Bundles.h"

#include <string>

namespace xdg {

class XdgBundles final : public platform::Bundles
{
public:
    /// `executable`: absolute path of this program. `catalogue` must outlive this.
    XdgBundles(const ApplicationCatalogue& catalogue, const std::string& executable);

    /// The same with the executable of this process.
    explicit XdgBundles(const ApplicationCatalogue& catalogue);

    platform::Bundle mainBundle() override { return main; }

    std::optional<platform::Bundle> open(const std::string& path) override;

    std::optional<std::string>
    pathForResource(const std::string& name, const std::string& type) override;

private:
    const ApplicationCatalogue& catalogue;
    platform::Bundle main;
};

} // namespace xdg
