// The one record by which the whole system speaks of an application. Two applications are the same
// when their bundle identifiers are, compared exactly. Main thread; any thread may call
// `fromApplicationPath` and `fromRunningApplication`.
#pragma once

#include "platform/Icon.h"
#include "platform/RunningApplication.h"

#include <memory>
#include <optional>
#include <string>

namespace applications {

class ApplicationEntity;
using ApplicationEntityPtr = std::shared_ptr<ApplicationEntity>;

class ApplicationEntity
{
public:
    /// Fatal: a record without a source means nothing.
    ApplicationEntity();

    /// Absent strings become empty ones.
    ApplicationEntity(
        const std::optional<std::string>& name,
        const std::optional<std::string>& bundleIdentifier,
        platform::IconHandle icon
    );

    /// The application of the bundle at `path`; empty when there is no bundle or it has no
    /// identifier.
    static ApplicationEntityPtr fromApplicationPath(const std::string& path);

    /// The installed application of that identifier; empty when it is not installed.
    static ApplicationEntityPtr fromBundleIdentifier(const std::string& bundleIdentifier);

    /// Never empty.
    static ApplicationEntityPtr
    fromRunningApplication(const platform::RunningApplication& application);

    /// The textual form for logs: the bundle identifier alone.
    [[nodiscard]] std::string description() const;

    std::string name;
    std::string bundleIdentifier;
    platform::IconHandle icon;
};

} // namespace applications
