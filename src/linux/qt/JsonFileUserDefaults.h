// The user's defaults in one JSON file. Values of types that are not read, and keys of other
// processes of this user, survive every rewrite. A value counts at once; the file is written by a
// thread of its own, for which `synchronize` waits as long as it is given. Main thread only.
#pragma once

#include "linux/qt/ObjectKeeper.h"
#include "platform/UserDefaults.h"

#include <chrono>
#include <functional>

namespace qt {

class JsonFileUserDefaults final : public platform::UserDefaults
{
public:
    /// The appearance that the desktop asks for, such as "Dark"; nothing for the plain one.
    using InterfaceStyle = std::function<std::optional<std::string>()>;

    /// The file is not waited for: what is kept when a lock begins must not hold the lock up.
    static constexpr std::chrono::milliseconds AT_ONCE{0};

    /// Reads the file at once. `path` is absolute; file and folder need not be there. The log is
    /// used on either thread.
    JsonFileUserDefaults(
        const std::string& path,
        InterfaceStyle interfaceStyle,
        platform::Log& log,
        std::chrono::milliseconds patience = AT_ONCE
    );

    std::optional<platform::DefaultsValue> value(const std::string& key) override;
    void setValue(const std::string& key, const std::string& value) override;
    void removeObject(const std::string& key) override;
    bool synchronize() override;

    /// As `synchronize`, and waits up to 2 s: before the process ends.
    bool finish();

    /// Only the global domain is known.
    std::optional<platform::DefaultsDomain> persistentDomain(const std::string& name) override;

private:
    ObjectKeeper kept;
    InterfaceStyle interfaceStyle;
};

} // namespace qt
