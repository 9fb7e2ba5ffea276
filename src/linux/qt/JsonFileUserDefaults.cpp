#include "linux/qt/JsonFileUserDefaults.h"

#include <QVariant>

#include <utility>

namespace qt {

namespace {

platform::DefaultsValue typed(const QJsonValue& value)
{
    const QVariant variant = value.toVariant();
    switch (variant.typeId()) {
    case QMetaType::QString:
        return variant.toString().toStdString();
    case QMetaType::Bool:
        return variant.toBool();
    case QMetaType::LongLong:
        return std::int64_t{variant.toLongLong()};
    case QMetaType::Double:
        return variant.toDouble();
    default:
        return platform::OpaqueValue{};
    }
}

} // namespace

JsonFileUserDefaults::JsonFileUserDefaults(
    const std::string& path, InterfaceStyle interfaceStyle, platform::Log& log
)
    : file(QString::fromStdString(path), log),
      interfaceStyle(std::move(interfaceStyle)),
      stored(file.read().object)
{
}

std::optional<platform::DefaultsValue> JsonFileUserDefaults::value(const std::string& key)
{
    const auto change = changes.find(key);
    if (change != changes.end()) {
        return change->second;
    }
    const auto found = stored.constFind(QString::fromStdString(key));
    return found == stored.constEnd() ? std::nullopt : std::optional(typed(*found));
}

void JsonFileUserDefaults::setValue(const std::string& key, const std::string& value)
{
    changes[key] = value;
}

void JsonFileUserDefaults::removeObject(const std::string& key)
{
    changes[key] = std::nullopt;
}

bool JsonFileUserDefaults::synchronize()
{
    const JsonObjectFile::Content current = file.read();
    if (current.state == JsonObjectFile::State::Blocked) {
        return false;
    }
    // a file that vanished or was damaged while the agent ran is made anew from what it held
    QJsonObject wanted = current.state == JsonObjectFile::State::Loaded ? current.object : stored;
    for (const auto& [key, change] : changes) {
        const QString name = QString::fromStdString(key);
        if (change.has_value()) {
            wanted.insert(name, QString::fromStdString(*change));
        } else {
            wanted.remove(name);
        }
    }
    if (wanted != current.object && !file.write(wanted)) {
        return false;
    }
    stored = wanted;
    changes.clear();
    return true;
}

std::optional<platform::DefaultsDomain>
JsonFileUserDefaults::persistentDomain(const std::string& name)
{
    if (name != platform::GLOBAL_DOMAIN) {
        return std::nullopt;
    }
    platform::DefaultsDomain domain;
    const std::optional<std::string> style = interfaceStyle ? interfaceStyle() : std::nullopt;
    if (style.has_value()) {
        domain["AppleInterfaceStyle"] = *style;
    }
    return domain;
}

} // namespace qt
