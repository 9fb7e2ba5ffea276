#include "ui/alerts/Alert.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace ui {

namespace {

constexpr int INFORMATIONAL = 1;
constexpr int CRITICAL = 2;

QMessageBox::Icon iconOf(int style)
{
    switch (style) {
    case INFORMATIONAL:
        return QMessageBox::Information;
    case CRITICAL:
        return QMessageBox::Critical;
    default:
        return QMessageBox::Warning;
    }
}

} // namespace

std::unique_ptr<QMessageBox>
makeAlert(const AlertTexts& texts, const std::vector<std::string>& options, QWidget* window)
{
    auto alert = std::make_unique<QMessageBox>(window);
    alert->setWindowTitle(QStringLiteral("Tarvel"));
    alert->setWindowFlag(Qt::WindowStaysOnTopHint);
    alert->setIcon(iconOf(texts.style));
    alert->setText(QString::fromStdString(texts.messageText));
    alert->setInformativeText(QString::fromStdString(texts.informativeText));
    for (QLabel* label : alert->findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    for (const std::string& option : options) {
        alert->addButton(QString::fromStdString(option), QMessageBox::AcceptRole);
    }
    if (options.empty()) {
        alert->addButton(QMessageBox::Ok);
    }
    const QList<QAbstractButton*> buttons = alert->buttons();
    alert->setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    alert->setEscapeButton(buttons.last());
    return alert;
}

int responseOf(const QMessageBox& alert)
{
    const auto position = alert.buttons().indexOf(alert.clickedButton());
    return ALERT_FIRST_BUTTON_RETURN + static_cast<int>(std::max<qsizetype>(position, 0));
}

} // namespace ui
