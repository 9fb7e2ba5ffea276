#include "AlertsTest.h"
#include "ui/alerts/LocalNotificationService.h"

#include <QTimer>

#include <functional>

namespace {

class LocalNotification : public AlertsTest
{
protected:
    /// Shows the alert, looks at it while the caller waits, and answers it.
    void show(bool isError, const std::function<void(const QMessageBox&)>& look)
    {
        QTimer::singleShot(0, qApp, [this, &look] {
            QMessageBox& alert = shown();
            look(alert);
            ++looked;
            alert.buttons().first()->click();
        });
        ui::LocalNotificationService().alertWithTitle("Title", "Message", isError);
    }

    int looked = 0;
};

} // namespace

TEST_F(LocalNotification, ReturnsWhenTheAlertWasAnswered)
{
    show(false, [](const QMessageBox& alert) {
        EXPECT_EQ(alert.text(), "Title");
        EXPECT_EQ(alert.informativeText(), "Message");
        EXPECT_EQ(buttonTexts(alert), std::vector<std::string>{"Ok"});
        EXPECT_EQ(alert.windowModality(), Qt::ApplicationModal);
    });
    EXPECT_EQ(looked, 1);
    EXPECT_TRUE(shownAlerts().empty());
}

TEST_F(LocalNotification, TellsAnErrorFromAnInformation)
{
    show(true, [](const QMessageBox& alert) { EXPECT_TRUE(showsPicture(alert, "AlertCritical")); });
    show(false, [](const QMessageBox& alert) {
        EXPECT_TRUE(showsPicture(alert, "AlertInformational"));
    });
    EXPECT_EQ(looked, 2);
}
