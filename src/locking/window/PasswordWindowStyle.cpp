#include "locking/window/PasswordWindowStyle.h"

#include "locking/window/LockSheet.h"
#include "locking/window/PadlockIcon.h"
#include "ui_PasswordWindow.h"

#include <algorithm>

namespace locking {

namespace {

constexpr double LARGEST_PLAIN_SIDE = 1080.0;
constexpr double SMALLEST_PLAIN_SIDE = 480.0;

constexpr double ICON_SIDE = 128.0;
constexpr double MESSAGE_WIDTH = 880.0;
constexpr double MESSAGE_TYPE = 30.0;
constexpr double FIELD_WIDTH = 320.0;
constexpr double FIELD_HEIGHT = 38.0;
constexpr double FIELD_TYPE = 16.0;
constexpr double FIELD_PADDING = 10.0;
constexpr double FIELD_RADIUS = 6.0;
constexpr double CARET_WIDTH = 1.5;
constexpr double SMALL_TYPE = 13.0;
constexpr double SMALL_LINE = 20.0;
constexpr double ERROR_TYPE = 14.0;
constexpr double ERROR_LINES = 42.0;
constexpr double GAP = 24.0;
constexpr double SMALL_GAP = 8.0;
constexpr double BOUNCE_DEPTH = 20.0;

/// Part of the window's width that is left free in all.
constexpr double MARGIN = 0.1;

/// A small icon gets blurred beyond recognition when it is magnified more than this.
constexpr int MOST_MAGNIFIED = 2;

double scaleFor(const QSize& size)
{
    const double side = std::min(size.width(), size.height());
    if (side < SMALLEST_PLAIN_SIDE) {
        return side / SMALLEST_PLAIN_SIDE;
    }
    return std::max(1.0, side / LARGEST_PLAIN_SIDE);
}

void setType(QWidget& widget, int pixels)
{
    QFont font = widget.font();
    font.setPixelSize(std::max(pixels, 1));
    widget.setFont(font);
}

/// The window may have had another size before.
void removeSpacings(QLayout& layout)
{
    for (int index = layout.count() - 1; index >= 0; --index) {
        if (layout.itemAt(index)->spacerItem() != nullptr) {
            delete layout.takeAt(index);
        }
    }
}

} // namespace

PasswordWindowStyle::PasswordWindowStyle(const QSize& size) : size(size), scale(scaleFor(size)) {}

int PasswordWindowStyle::pixels(double points) const
{
    return qRound(points * scale);
}

int PasswordWindowStyle::bounceDepth() const
{
    return pixels(BOUNCE_DEPTH);
}

void PasswordWindowStyle::apply(const Ui::PasswordWindow& ui) const
{
    const int widest = qRound(size.width() * (1.0 - MARGIN));
    const int fieldWidth = std::min(pixels(FIELD_WIDTH), widest);

    ui.appIconOutlet->setFixedSize(pixels(ICON_SIDE), pixels(ICON_SIDE));
    setType(*ui.appNameLabelOutlet, pixels(MESSAGE_TYPE));
    ui.appNameLabelOutlet->setLineWidth(std::min(pixels(MESSAGE_WIDTH), widest));

    setType(*ui.passwordFieldOutlet, pixels(FIELD_TYPE));
    ui.passwordFieldOutlet->setFixedSize(fieldWidth, pixels(FIELD_HEIGHT));
    ui.centralViewOutlet->window()->setStyleSheet(lockSheet({fieldWidth, pixels(FIELD_HEIGHT)}));
    ui.passwordFieldOutlet->setTextMargins(pixels(FIELD_PADDING), 0, pixels(FIELD_PADDING), 0);
    ui.passwordFieldOutlet->setCornerRadius(FIELD_RADIUS * scale);
    ui.passwordFieldOutlet->setCaretWidth(std::max(1, pixels(CARET_WIDTH)));

    setType(*ui.capsLockLabel, pixels(SMALL_TYPE));
    setType(*ui.keyboardLayoutLabel, pixels(SMALL_TYPE));
    setType(*ui.keyboardLayoutButton, pixels(SMALL_TYPE));
    ui.keyboardView->setFixedSize(fieldWidth, pixels(SMALL_LINE));
    setType(*ui.errorMessageLabelOutlet, pixels(ERROR_TYPE));
    ui.errorMessageLabelOutlet->setFixedSize(
        std::min(pixels(MESSAGE_WIDTH), widest), pixels(ERROR_LINES)
    );

    QVBoxLayout& layout = *ui.centralLayout;
    removeSpacings(layout);
    layout.insertSpacing(layout.indexOf(ui.appNameLabelOutlet), pixels(GAP));
    layout.insertSpacing(layout.indexOf(ui.passwordFieldOutlet), pixels(GAP));
    layout.insertSpacing(layout.indexOf(ui.keyboardView), pixels(SMALL_GAP));
    layout.insertSpacing(layout.indexOf(ui.errorMessageLabelOutlet), pixels(SMALL_GAP));
}

QPixmap PasswordWindowStyle::picture(const QIcon& icon, double devicePixelRatio) const
{
    const int side = qRound(ICON_SIDE * scale * devicePixelRatio);
    QPixmap pixmap = icon.pixmap(QSize(side, side), 1.0);
    if (pixmap.isNull()) {
        pixmap = padlockIcon(side);
    }
    const int larger = std::max(pixmap.width(), pixmap.height());
    if (larger < side) {
        const int wanted = std::min(side, larger * MOST_MAGNIFIED);
        pixmap = pixmap.scaled(wanted, wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

} // namespace locking
