#include "ui/windows/selection/SelectionKeys.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <memory>

namespace ui {

namespace {

/// Types something, or takes something typed away.
bool isTyping(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers command = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const QString text = event.text();
    return (event.modifiers() & command) == Qt::NoModifier &&
           (event.key() == Qt::Key_Backspace ||
            (!text.isEmpty() && text.front().isPrint() && event.key() != Qt::Key_Space));
}

} // namespace

SelectionKeys::SelectionKeys(TextField& filter, TableView& list) : filter(filter), list(list)
{
    filter.onKeyDown = [this](const QKeyEvent& event) { return isKeyOfFilterUsed(event); };
    list.onKeyDown = [this](const QKeyEvent& event) { return isKeyOfListUsed(event); };
}

bool SelectionKeys::isKeyOfFilterUsed(const QKeyEvent& event) const
{
    const bool leadsDown = event.key() == Qt::Key_Down || event.key() == Qt::Key_PageDown;
    if (!leadsDown || list.model()->rowCount() == 0) {
        return false;
    }
    list.setFocus();
    return true;
}

bool SelectionKeys::isKeyOfListUsed(const QKeyEvent& event) const
{
    if (event.key() == Qt::Key_Up && list.currentRow() <= 0) {
        filter.setFocus();
        return true;
    }
    if (!isTyping(event)) {
        return false;
    }
    filter.setFocus();
    const std::unique_ptr<QKeyEvent> typed(event.clone());
    QCoreApplication::sendEvent(&filter, typed.get());
    return true;
}

} // namespace ui
