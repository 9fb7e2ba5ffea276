#include "ui/views/TextField.h"

#include "platform/Call.h"
#include "ui/views/Theme.h"

#include <QFocusEvent>
#include <QKeyEvent>

namespace ui {

using toolkit::TextMovement;

TextField::TextField(QWidget* parent) : EditingField(parent)
{
    setPlaceholderColor(Theme::QUIET);
    connect(this, &QLineEdit::textEdited, this, [this] { platform::call(onChange); });
}

std::string TextField::stringValue() const
{
    return text().toStdString();
}

void TextField::setStringValue(const std::string& value)
{
    setText(QString::fromStdString(value));
}

void TextField::keyPressEvent(QKeyEvent* event)
{
    const std::function<bool(const QKeyEvent&)> listener = onKeyDown;
    if (!listener || !listener(*event)) {
        EditingField::keyPressEvent(event);
    }
}

void TextField::focusOutEvent(QFocusEvent* event)
{
    EditingField::focusOutEvent(event);
    switch (event->reason()) {
    case Qt::MouseFocusReason:
    case Qt::ShortcutFocusReason:
    case Qt::OtherFocusReason:
        endEditing(TextMovement::Other);
        break;
    default: // Tab has said so already, and the rest comes back
        break;
    }
}

} // namespace ui
