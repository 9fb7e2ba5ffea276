#include "ui/alerts/LocalNotificationService.h"

#include "ui/alerts/Alert.h"

namespace ui {

void LocalNotificationService::alertWithTitle(
    const std::string& title, const std::string& message, bool isError
) const
{
    const int style = isError ? 2 : 1;
    makeAlert({title, message, style}, {"Ok"}, nullptr)->exec();
}

} // namespace ui
