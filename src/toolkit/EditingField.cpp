#include "toolkit/EditingField.h"

#include "platform/Call.h"

#include <QAccessible>
#include <QKeyEvent>

#include <utility>

namespace toolkit {

namespace {

/// Keys that are commands to the field, whatever waits for a letter.
bool isCommand(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Escape:
        return true;
    case Qt::Key_Control:
        return false;
    default:
        return event.modifiers().testFlag(Qt::ControlModifier);
    }
}

} // namespace

EditingField::EditingField(QWidget* parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::returnPressed, this, [this] { endEditing(TextMovement::Return); });
    connect(this, &QLineEdit::textEdited, this, [this] { takeBackRefusal(); });
    connect(this, &QLineEdit::textChanged, this, [this] { composer.reset(); });
}

void EditingField::clear()
{
    composer.reset();
    QLineEdit::clear();
}

void EditingField::setPlaceholderColor(const QColor& color)
{
    placeholderColor = color;
    keepPlaceholderColor();
}

/// A style sheet makes it half as opaque as the text.
void EditingField::keepPlaceholderColor()
{
    QPalette colors = palette();
    if (placeholderColor.isValid() && colors.color(QPalette::PlaceholderText) != placeholderColor) {
        colors.setColor(QPalette::PlaceholderText, placeholderColor);
        setPalette(colors);
    }
}

bool EditingField::event(QEvent* event)
{
    const bool done = QLineEdit::event(event);
    if (event->type() == QEvent::Polish) {
        keepPlaceholderColor();
    }
    return done;
}

void EditingField::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange) {
        keepPlaceholderColor();
    }
}

void EditingField::sayWrong(const QString& reason)
{
    takeBackRefusal();
    descriptionBefore = accessibleDescription();
    refusal = reason;
    setAccessibleDescription(reason);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void EditingField::takeBackRefusal()
{
    const QString told = std::exchange(refusal, {});
    if (!told.isEmpty() && told == accessibleDescription()) {
        setAccessibleDescription(descriptionBefore);
    }
}

QVariant EditingField::inputMethodQuery(Qt::InputMethodQuery property) const
{
    return inputMethodQuery(property, QVariant());
}

QVariant
EditingField::inputMethodQuery(Qt::InputMethodQuery property, const QVariant& argument) const
{
    if (echoMode() == QLineEdit::Normal) {
        return QLineEdit::inputMethodQuery(property, argument);
    }
    switch (property) {
    case Qt::ImEnabled:
        return false;
    case Qt::ImCursorPosition:
    case Qt::ImAnchorPosition:
    case Qt::ImAbsolutePosition:
        return 0;
    case Qt::ImSurroundingText:
    case Qt::ImCurrentSelection:
    case Qt::ImTextBeforeCursor:
    case Qt::ImTextAfterCursor:
        return QString();
    default:
        return QLineEdit::inputMethodQuery(property, argument);
    }
}

void EditingField::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && event->isAutoRepeat()) {
        event->accept();
        return;
    }
    if (echoMode() != QLineEdit::Normal && compose(*event)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

bool EditingField::compose(const QKeyEvent& event)
{
    if (isCommand(event)) {
        composer.reset();
        return false;
    }
    const std::optional<QString> text = composer.press(event.nativeVirtualKey());
    if (text && !text->isEmpty()) {
        insert(*text);
    }
    return text.has_value();
}

void EditingField::focusInEvent(QFocusEvent* event)
{
    composer.reset();
    QLineEdit::focusInEvent(event);
}

void EditingField::focusOutEvent(QFocusEvent* event)
{
    composer.reset();
    QLineEdit::focusOutEvent(event);
}

bool EditingField::focusNextPrevChild(bool next)
{
    endEditing(next ? TextMovement::Tab : TextMovement::Backtab);
    return QLineEdit::focusNextPrevChild(next);
}

void EditingField::endEditing(TextMovement movement) const
{
    platform::call(onEndEditing, movement);
}

} // namespace toolkit
