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
    const std::string& path,
    InterfaceStyle interfaceStyle,
    platform::Log& log,
    std::chrono::milliseconds patience
)
    : kept(JsonObjectFile(QString::fromStdString(path), log), patience),
      interfaceStyle(std::move(interfaceStyle))
{
}

std::optional<platform::DefaultsValue> JsonFileUserDefaults::value(const std::string& key)
{
    const QJsonValue value = kept.value(key);
    return value.isUndefined() ? std::nullopt : std::optional(typed(value));
}

void JsonFileUserDefaults::setValue(const std::string& key, const std::string& value)
{
    kept.change(key, value);
}

void JsonFileUserDefaults::removeObject(const std::string& key)
{
    kept.change(key, std::nullopt);
}

bool JsonFileUserDefaults::synchronize()
{
    return kept.save();
}

bool JsonFileUserDefaults::finish()
{
    constexpr std::chrono::seconds LAST_WAIT(2);
    return kept.finish(LAST_WAIT);
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
