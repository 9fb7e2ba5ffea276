// What was typed into a field for passwords.
#pragma once

#include "platform/Secret.h"

#include <QByteArray>
#include <QLineEdit>

#include <string>
#include <utility>

namespace toolkit {

inline platform::Secret typedSecret(const QLineEdit& field)
{
    QByteArray bytes = field.text().toUtf8();
    std::string text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    bytes.fill('\0');
    return platform::Secret(std::move(text));
}

} // namespace toolkit
