#include "ui/views/TextField.h"

#include "platform/Call.h"
#include "ui/views/Theme.h"

#include <QFocusEvent>
#include <QKeyEvent>

namespace ui {

using toolkit::TextMovement;

TextField::TextField(QWidget* parent) : EditingField(parent)
{
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

bool TextField::event(QEvent* event)
{
    const bool done = EditingField::event(event);
    if (event->type() == QEvent::Polish) {
        keepPlaceholderLegible();
    }
    return done;
}

void TextField::changeEvent(QEvent* event)
{
    EditingField::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange) {
        keepPlaceholderLegible();
    }
}

void TextField::keepPlaceholderLegible()
{
    // a style sheet makes it half as opaque as the text
    QPalette colors = palette();
    if (colors.color(QPalette::PlaceholderText) != Theme::QUIET) {
        colors.setColor(QPalette::PlaceholderText, Theme::QUIET);
        setPalette(colors);
    }
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
