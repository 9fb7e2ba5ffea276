// Alerts on a desktop in memory, shown on the toolkit's offscreen platform.
#pragma once

#include "fakes/FakePlatform.h"
#include "ui/views/Images.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include <string>
#include <vector>

#include <gtest/gtest.h>

/// The alerts on the screen.
inline std::vector<QMessageBox*> shownAlerts()
{
    std::vector<QMessageBox*> result;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const alert = qobject_cast<QMessageBox*>(widget);
        if (alert != nullptr && alert->isVisible()) {
            result.push_back(alert);
        }
    }
    return result;
}

inline std::vector<std::string> buttonTexts(const QMessageBox& alert)
{
    std::vector<std::string> result;
    for (const QAbstractButton* button : alert.buttons()) {
        result.push_back(button->text().toStdString());
    }
    return result;
}

/// True when the alert shows the program's picture of that name.
inline bool showsPicture(const QMessageBox& alert, const char* name)
{
    const QPixmap shown = alert.iconPixmap();
    return shown.toImage() == ui::requiredImage(name).pixmap(shown.size()).toImage();
}

class AlertsTest : public testing::Test
{
protected:
    void TearDown() override
    {
        for (QMessageBox* alert : shownAlerts()) {
            delete alert;
        }
    }

    /// Runs the main queue and gives the one alert that it brought up.
    QMessageBox& shown()
    {
        fake.dispatchQueues.runAll();
        QCoreApplication::processEvents();
        const std::vector<QMessageBox*> alerts = shownAlerts();
        if (alerts.size() != 1) {
            ADD_FAILURE() << alerts.size() << " alerts are shown";
            std::abort();
        }
        return *alerts.front();
    }

    fakes::FakePlatform fake;
};
