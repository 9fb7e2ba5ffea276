#include "toolkit/EditingField.h"

#include "platform/Call.h"

#include <QKeyEvent>

namespace toolkit {

EditingField::EditingField(QWidget* parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::returnPressed, this, [this] { endEditing(TextMovement::Return); });
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
    QLineEdit::keyPressEvent(event);
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
