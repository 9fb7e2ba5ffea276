// Alerts as sheets on a window or, without one, for the whole program, and notifications of the
// desktop. Alerts are shown later on the main queue, and nobody waits for them. A window that is
// not on the screen by then carries no sheet: its alert is the whole program's. Any thread may ask
// for an alert; notifications are the main thread's.
#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

namespace ui {

class AlertMessagesService
{
public:
    /// Receives the response code: 1000 for the first button, 1001 for the second ...
    using CompletionHandler = std::function<void(int response)>;

    /// Types of alerts.
    static constexpr int WARNING = 0;
    static constexpr int INFORMATIONAL = 1;
    static constexpr int CRITICAL = 2;

    /// `window`: what the alert is a sheet of, or nothing for an alert of the whole program.
    void showAlert(const std::string& title, const std::string& message, int type, QWidget* window)
        const;

    /// The same with a button for each of `options`.
    void showAlertWithOptions(
        const std::string& title,
        const std::string& message,
        int type,
        const std::vector<std::string>& options,
        const CompletionHandler& completionHandler,
        QWidget* window
    ) const;

    void showLocalNotification(const std::string& title, const std::string& message) const;

    /// Part of the interface, and empty: no alert of this program needs them.
    QPointer<QObject> imageHelpPopover;
    QPointer<QObject> sheetWindowToOpen;
    QPointer<QObject> updatingDefinitionsWindow;
};

} // namespace ui
