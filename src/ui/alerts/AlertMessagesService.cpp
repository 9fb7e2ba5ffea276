#include "ui/alerts/AlertMessagesService.h"

#include "app/BackgroundRunner.h"
#include "platform/Platform.h"
#include "platform/UserNotifications.h"
#include "ui/alerts/Alert.h"

namespace ui {

namespace {

/// Shows the alert and leaves it to itself; it goes when it is answered, or with its window.
void present(
    std::unique_ptr<QMessageBox> alert,
    bool asSheet,
    const AlertMessagesService::CompletionHandler& completionHandler
)
{
    QMessageBox* const shown = alert.release();
    shown->setAttribute(Qt::WA_DeleteOnClose);
    shown->setWindowModality(asSheet ? Qt::WindowModal : Qt::ApplicationModal);
    QObject::connect(shown, &QDialog::finished, shown, [shown, completionHandler] {
        if (completionHandler) {
            completionHandler(responseOf(*shown));
        }
    });
    shown->show();
    shown->raise();
    shown->activateWindow();
}

} // namespace

void AlertMessagesService::showAlert(
    const std::string& title, const std::string& message, int type, QWidget* window
) const
{
    showAlertWithOptions(title, message, type, {}, {}, window);
}

// NOLINTNEXTLINE(readability-function-size): six things make such an alert
void AlertMessagesService::showAlertWithOptions(
    const std::string& title,
    const std::string& message,
    int type,
    const std::vector<std::string>& options,
    const CompletionHandler& completionHandler,
    QWidget* window
) const
{
    app::BackgroundRunner::runOnMainThread([texts = AlertTexts{title, message, type},
                                            options,
                                            completionHandler,
                                            sheetOf = QPointer<QWidget>(window)] {
        QWidget* const parent = sheetOf.data();
        const bool asSheet = parent != nullptr && parent->isVisible();
        present(makeAlert(texts, options, asSheet ? parent : nullptr), asSheet, completionHandler);
    });
}

void AlertMessagesService::showLocalNotification(
    const std::string& title, const std::string& message
) const
{
    platform::current().userNotifications.deliver({
        .title = title,
        .informativeText = message,
        .hasActionButton = false,
        .defaultSound = true,
    });
}

} // namespace ui
