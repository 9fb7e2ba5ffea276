#include "ui/alerts/LocalNotificationService.h"

#include "ui/alerts/Alert.h"
#include "ui/alerts/AlertMessagesService.h"

namespace ui {

void LocalNotificationService::alertWithTitle(
    const std::string& title, const std::string& message, bool isError
) const
{
    const int style =
        isError ? AlertMessagesService::CRITICAL : AlertMessagesService::INFORMATIONAL;
    makeAlert({title, message, style}, {"Ok"}, nullptr)->exec();
}

} // namespace ui
