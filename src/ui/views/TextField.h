// A line of text that says how its editing ended. Masked (echo mode "Password"), it gives nothing
// of the text away to the clipboard, to input methods or to assistive tools.
#pragma once

#include "toolkit/TextMovement.h"

#include <QLineEdit>

#include <functional>
#include <string>

namespace ui {

class TextField : public QLineEdit
{
    Q_OBJECT

public:
    explicit TextField(QWidget* parent = nullptr);

    std::string stringValue() const;
    void setStringValue(const std::string& value);

    /// The editing ended: by Return, by Tab or Backtab, or because the focus went elsewhere.
    std::function<void(toolkit::TextMovement)> onEndEditing;

    /// The user changed the text.
    std::function<void()> onChange;

    /// Asked first at each key; true when the key was used.
    std::function<bool(const QKeyEvent& event)> onKeyDown;

    QVariant inputMethodQuery(Qt::InputMethodQuery property) const override;

    /// The same; the toolkit finds this one by its name.
    Q_INVOKABLE QVariant
    inputMethodQuery(Qt::InputMethodQuery property, const QVariant& argument) const;

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void keepPlaceholderLegible();
    void endEditing(toolkit::TextMovement movement) const;
};

} // namespace ui
