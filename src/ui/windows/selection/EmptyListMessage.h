// What the list says when it has no rows: why that is so, and what to do next.
#pragma once

#include <QString>

namespace ui {

struct EmptyListMessage
{
    QString heading;
    QString hint;
};

/// `filter`: as typed, empty for none; `listIsEmpty`: there would be no rows without it either.
EmptyListMessage emptyListMessage(
    const QString& filter, bool listIsEmpty, bool runningApplicationsOnly, bool someAreProtected
);

} // namespace ui
