#include "ui/windows/selection/EmptyListMessage.h"

namespace ui {

namespace {

constexpr int LONGEST_FILTER = 40;

QString shortened(const QString& text)
{
    return text.size() > LONGEST_FILTER ? text.left(LONGEST_FILTER) + QStringLiteral("…") : text;
}

EmptyListMessage nothingMatches(const QString& filter, bool runningApplicationsOnly)
{
    return {
        QStringLiteral("Nothing matches “%1”").arg(shortened(filter)),
        runningApplicationsOnly
            ? QStringLiteral("Try another part of the name, or turn off “List Running Applications "
                             "Only” to look among all that are installed.")
            : QStringLiteral("Try another part of the name, or start the application and turn on "
                             "“List Running Applications Only”.")};
}

EmptyListMessage everythingIsProtected(bool runningApplicationsOnly)
{
    if (runningApplicationsOnly) {
        return {
            QStringLiteral("Everything that runs is protected"),
            QStringLiteral("Start another application, or turn off “List Running Applications "
                           "Only” to choose from all that are installed.")};
    }
    return {
        QStringLiteral("Everything here is protected"),
        QStringLiteral("If an application is missing, start it and turn on “List Running "
                       "Applications Only”.")};
}

EmptyListMessage nothingThere(bool runningApplicationsOnly)
{
    if (runningApplicationsOnly) {
        return {
            QStringLiteral("No application is running"),
            QStringLiteral("Start the application that you want to protect; it appears here at "
                           "once.")};
    }
    return {
        QStringLiteral("No applications found"),
        QStringLiteral("Start the application that you want to protect and turn on “List Running "
                       "Applications Only”.")};
}

} // namespace

EmptyListMessage emptyListMessage(const EmptyListCause& cause)
{
    if (!cause.listIsEmpty) {
        return nothingMatches(cause.filter, cause.runningApplicationsOnly);
    }
    return cause.someAreProtected ? everythingIsProtected(cause.runningApplicationsOnly)
                                  : nothingThere(cause.runningApplicationsOnly);
}

} // namespace ui
