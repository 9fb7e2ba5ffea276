// A plain text as a tool tip. The toolkit takes a tip for markup where it looks like that, and
// shows the escapes of one that does not: this one always is markup.
#pragma once

#include <QString>

namespace toolkit {

inline QString toolTipOf(const QString& text)
{
    return QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}

} // namespace toolkit
