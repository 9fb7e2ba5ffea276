#include "ui/alerts/Alert.h"

#include "ui/alerts/AlertMessagesService.h"
#include "ui/views/Images.h"
#include "ui/views/Theme.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace ui {

namespace {

constexpr int ICON_SIDE = 48;
constexpr int MARGIN = 2 * Theme::GRID;

QString pictureOf(int style)
{
    switch (style) {
    case AlertMessagesService::INFORMATIONAL:
        return QStringLiteral("AlertInformational");
    case AlertMessagesService::CRITICAL:
        return QStringLiteral("AlertCritical");
    default:
        return QStringLiteral("AlertWarning");
    }
}

/// The title as it is written: no character of it marks a key.
QString buttonTitle(const std::string& option)
{
    return QString::fromStdString(option).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// Gives the alert the margins of the program, and its texts room for a good line.
void arrange(const QMessageBox& alert)
{
    constexpr int CHARACTERS = 40;
    auto* const layout = qobject_cast<QGridLayout*>(alert.layout());
    if (layout == nullptr) {
        return; // another layout of the toolkit's is as good
    }
    layout->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    layout->setColumnMinimumWidth(
        layout->columnCount() - 1, CHARACTERS * alert.fontMetrics().averageCharWidth()
    );
}

} // namespace

std::unique_ptr<QMessageBox>
makeAlert(const AlertTexts& texts, const std::vector<std::string>& options, QWidget* window)
{
    auto alert = std::make_unique<QMessageBox>(window);
    alert->setWindowTitle(QStringLiteral("Tarvel"));
    alert->setWindowFlag(Qt::WindowStaysOnTopHint);
    alert->setIconPixmap(requiredImage(pictureOf(texts.style)).pixmap(ICON_SIDE));
    alert->setText(QString::fromStdString(texts.messageText));
    alert->setInformativeText(QString::fromStdString(texts.informativeText));
    for (QLabel* label : alert->findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    for (const std::string& option : options) {
        alert->addButton(buttonTitle(option), QMessageBox::AcceptRole);
    }
    if (options.empty()) {
        alert->addButton(QMessageBox::Ok);
    }
    const QList<QAbstractButton*> buttons = alert->buttons();
    arrange(*alert);
    alert->setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    alert->setEscapeButton(buttons.last());
    return alert;
}

int responseOf(const QMessageBox& alert)
{
    const QAbstractButton* const clicked = alert.clickedButton();
    const auto position =
        alert.buttons().indexOf(clicked != nullptr ? clicked : alert.escapeButton());
    return ALERT_FIRST_BUTTON_RETURN + static_cast<int>(std::max<qsizetype>(position, 0));
}

} // namespace ui
