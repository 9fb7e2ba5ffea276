// A line for a password: shows marks for what is typed, gives none of it away to the clipboard, to
// other programs or to assistive tools, and keeps the focus of its window. Its caret shows whenever
// its window does: the captured keyboard types here, whoever the desktop says has the focus.
#pragma once

#include "toolkit/EditingField.h"

#include <QBasicTimer>

namespace locking {

class SecureTextField : public toolkit::EditingField
{
    Q_OBJECT

public:
    explicit SecureTextField(QWidget* parent = nullptr);

    void setCornerRadius(double radius);
    void setCaretWidth(int width);

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

    double cornerRadius = 0.0;
    int caretWidth = 1;
    bool caretShown = true;
    QBasicTimer blinking;
};

} // namespace locking
