#include "toolkit/MaskedTextEvents.h"

#include <QLineEdit>
#include <QStyle>

namespace toolkit {

namespace {

/// Null where the event is none of a masked field.
const QLineEdit* maskedFieldOf(const QAccessibleEvent& event)
{
    const auto* const field = qobject_cast<QLineEdit*>(event.object());
    return field != nullptr && field->echoMode() != QLineEdit::Normal ? field : nullptr;
}

/// As many of its marks as the text has characters, so that places in it stay what they are.
QString marksFor(const QString& text, const QLineEdit& field)
{
    if (field.echoMode() == QLineEdit::NoEcho) {
        return {};
    }
    const int mark =
        field.style()->styleHint(QStyle::SH_LineEdit_PasswordCharacter, nullptr, &field);
    return {text.size(), QChar(mark)};
}

} // namespace

QAccessible::UpdateHandler MaskedTextEvents::next = nullptr;

MaskedTextEvents::MaskedTextEvents()
{
    next = QAccessible::installUpdateHandler(tell);
}

MaskedTextEvents::~MaskedTextEvents()
{
    QAccessible::installUpdateHandler(next);
    next = nullptr;
}

void MaskedTextEvents::tell(QAccessibleEvent* event)
{
    const QLineEdit* const field = maskedFieldOf(*event);
    if (field == nullptr) {
        pass(event);
        return;
    }
    switch (event->type()) {
    case QAccessible::TextInserted: {
        const auto& plain = *static_cast<QAccessibleTextInsertEvent*>(event);
        passMasked(
            QAccessibleTextInsertEvent(
                event->object(), plain.changePosition(), marksFor(plain.textInserted(), *field)
            ),
            plain
        );
        return;
    }
    case QAccessible::TextRemoved: {
        const auto& plain = *static_cast<QAccessibleTextRemoveEvent*>(event);
        passMasked(
            QAccessibleTextRemoveEvent(
                event->object(), plain.changePosition(), marksFor(plain.textRemoved(), *field)
            ),
            plain
        );
        return;
    }
    case QAccessible::TextUpdated: {
        const auto& plain = *static_cast<QAccessibleTextUpdateEvent*>(event);
        passMasked(
            QAccessibleTextUpdateEvent(
                event->object(),
                plain.changePosition(),
                marksFor(plain.textRemoved(), *field),
                marksFor(plain.textInserted(), *field)
            ),
            plain
        );
        return;
    }
    default:
        pass(event);
    }
}

void MaskedTextEvents::passMasked(
    QAccessibleTextCursorEvent&& masked, const QAccessibleTextCursorEvent& plain
)
{
    masked.setCursorPosition(plain.cursorPosition());
    pass(&masked);
}

/// The toolkit passes an event on to the platform where nobody else wants it. It has a table follow
/// its model before that, which happens twice here: for a model that is reset, as all of this
/// program's are, that is as once.
void MaskedTextEvents::pass(QAccessibleEvent* event)
{
    QAccessible::installUpdateHandler(next);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(tell);
}

} // namespace toolkit
