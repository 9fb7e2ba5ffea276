#include "locking/window/SecureTextField.h"

#include "locking/window/PlainFieldStyle.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTimerEvent>

namespace locking {

using toolkit::TextMovement;

namespace {

constexpr double GROUND_OPACITY = 0.2;
constexpr double SELECTION_OPACITY = 0.35;

const QColor PLACEHOLDER(236, 238, 242); // any darker, and it is hard to read on this ground

QColor whiteOf(double opacity)
{
    return QColor::fromRgbF(1.0F, 1.0F, 1.0F, static_cast<float>(opacity));
}

} // namespace

SecureTextField::SecureTextField(QWidget* parent) : EditingField(parent)
{
    setEchoMode(QLineEdit::Password);
    setFrame(false);
    setDragEnabled(false);
    setAcceptDrops(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    useOwnColors();
    setPlaceholderColor(PLACEHOLDER);

    connect(this, &QLineEdit::textChanged, this, [this] { restartBlinking(); });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] { restartBlinking(); });
    connect(this, &QLineEdit::selectionChanged, this, [this] { restartBlinking(); });
}

void SecureTextField::useOwnColors()
{
    // the desktop's own style might draw a frame, a focus ring or another ground
    auto* const plain = new PlainFieldStyle;
    plain->setParent(this);
    setStyle(plain);

    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, Qt::white);
    colors.setColor(QPalette::Highlight, whiteOf(SELECTION_OPACITY));
    colors.setColor(QPalette::HighlightedText, Qt::white);
    setPalette(colors);
}

void SecureTextField::setCornerRadius(double radius)
{
    cornerRadius = radius;
    update();
}

void SecureTextField::setCaretWidth(int width)
{
    caretWidth = width;
    update();
}

void SecureTextField::keyPressEvent(QKeyEvent* event)
{
    // what goes with Alt or Meta is a command of the desktop and not typed, though it has a text
    if ((event->modifiers() & (Qt::AltModifier | Qt::MetaModifier)) != 0) {
        event->accept();
        return;
    }
    EditingField::keyPressEvent(event);
}

void SecureTextField::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(whiteOf(GROUND_OPACITY));
        painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    }
    EditingField::paintEvent(event);
    if (caretShown && !hasSelectedText() && window()->focusWidget() == this) {
        paintCaret();
    }
}

void SecureTextField::paintCaret()
{
    // the toolkit's rectangle of the caret has a margin of the same width on both sides
    const QRect place = cursorRect();
    QRect caret(0, 0, caretWidth, place.height());
    caret.moveCenter(place.center());
    caret.moveLeft(place.center().x() + 1);
    QPainter(this).fillRect(caret, Qt::white);
}

void SecureTextField::restartBlinking()
{
    const int period = QGuiApplication::styleHints()->cursorFlashTime();
    if (period > 1 && isVisible()) {
        blinking.start(period / 2, this);
    } else {
        blinking.stop();
    }
    caretShown = true;
    update();
}

void SecureTextField::showEvent(QShowEvent* event)
{
    EditingField::showEvent(event);
    restartBlinking();
}

void SecureTextField::hideEvent(QHideEvent* event)
{
    blinking.stop();
    EditingField::hideEvent(event);
}

void SecureTextField::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != blinking.timerId()) {
        EditingField::timerEvent(event);
        return;
    }
    caretShown = !caretShown;
    update();
}

void SecureTextField::focusOutEvent(QFocusEvent* event)
{
    EditingField::focusOutEvent(event);
    endEditing(TextMovement::Other);
}

bool SecureTextField::focusNextPrevChild(bool next)
{
    endEditing(next ? TextMovement::Tab : TextMovement::Backtab);
    return true; // there is nowhere else to go
}

} // namespace locking
