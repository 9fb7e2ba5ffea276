// A line for a password: shows marks for what is typed, gives none of it away to the clipboard, to
// other programs or to assistive tools, and keeps the focus of its window. Its caret shows whenever
// its window does: the captured keyboard types here, whoever the desktop says has the focus.
#pragma once

#include "toolkit/TextMovement.h"

#include <QBasicTimer>
#include <QLineEdit>

#include <functional>

namespace locking {

class SecureTextField : public QLineEdit
{
    Q_OBJECT

public:
    explicit SecureTextField(QWidget* parent = nullptr);

    std::function<void(toolkit::TextMovement)> onEndEditing;

    void setCornerRadius(double radius);
    void setCaretWidth(int width);

    /// Answers no question about the text itself.
    QVariant inputMethodQuery(Qt::InputMethodQuery property) const override;

    /// The same; the toolkit finds this one by its name.
    Q_INVOKABLE QVariant
    inputMethodQuery(Qt::InputMethodQuery property, const QVariant& argument) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void useOwnColors();
    void restartBlinking();
    void paintCaret();
    void endEditing(toolkit::TextMovement movement) const;

    double cornerRadius = 0.0;
    int caretWidth = 1;
    bool caretShown = true;
    QBasicTimer blinking;
};

} // namespace locking
