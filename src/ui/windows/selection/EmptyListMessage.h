// What the list says when it has no rows: why that is so, and what to do next.
#pragma once

#include <QString>

namespace ui {

struct EmptyListMessage
{
    QString heading;
    QString hint;
};

struct EmptyListCause
{
    QString filter;           // as typed, empty for none
    bool listIsEmpty = false; // there would be no rows without the filter either
    bool runningApplicationsOnly = false;
    bool someAreProtected = false;
};

EmptyListMessage emptyListMessage(const EmptyListCause& cause);

} // namespace ui
