// Application bundles: a folder of this program's own layout, or an entry of the user's application
// catalogue. Any thread may call.
#pragma once

#include "platform/Port.h"

#include <optional>
#include <string>

namespace platform {

/// The part of a bundle's information that the system reads; absent where the bundle has none.
struct Bundle
{
    std::string path;
    std::optional<std::string> name;       // CFBundleName
    std::optional<std::string> executable; // CFBundleExecutable
    std::optional<std::string> identifier; // CFBundleIdentifier

    friend bool operator==(const Bundle&, const Bundle&) = default;
};

class Bundles : public Port
{
public:
    /// This program's own bundle. An empty identifier means that it has none.
    virtual Bundle mainBundle() = 0;

    /// The bundle at `path`, or nothing when there is none that can be read.
    virtual std::optional<Bundle> open(const std::string& path) = 0;

    /// Path of the resource `name` of that type ("Help", "html") in this program's own bundle, or
    /// nothing when there is none.
    virtual std::optional<std::string>
    pathForResource(const std::string& name, const std::string& type) = 0;
};

} // namespace platform
