// The user's defaults in one JSON file. Values of types that are not read, and keys of other
// processes of this user, survive every rewrite. Main thread only.
#pragma once

#include "linux/qt/JsonObjectFile.h"
#include "platform/UserDefaults.h"

#include <functional>

namespace qt {

class JsonFileUserDefaults final : public platform::UserDefaults
{
public:
    /// The appearance that the desktop asks for, such as "Dark"; nothing for the plain one.
    using InterfaceStyle = std::function<std::optional<std::string>()>;

    /// Reads the file at once. `path` is absolute; file and folder need not be there.
    JsonFileUserDefaults(
        const std::string& path, InterfaceStyle interfaceStyle, platform::Log& log
    );

    std::optional<platform::DefaultsValue> value(const std::string& key) override;
    void setValue(const std::string& key, const std::string& value) override;
    void removeObject(const std::string& key) override;
    bool synchronize() override;

    /// Only the global domain is known.
    std::optional<platform::DefaultsDomain> persistentDomain(const std::string& name) override;

private:
    JsonObjectFile file;
    InterfaceStyle interfaceStyle;
    QJsonObject stored;                                        // as the file was when last seen
    std::map<std::string, std::optional<std::string>> changes; // nothing = removed
};

} // namespace qt
