// A line of text that says how its editing ended. Masked, it takes no input method, tells none what
// the text is or how long, and puts dead keys and Compose sequences together by itself, so that the
// same keys always make the same password. A Return that is held counts once. Main thread only.
#pragma once

#include "toolkit/KeyComposer.h"
#include "toolkit/TextMovement.h"

#include <QLineEdit>

#include <functional>

namespace toolkit {

class EditingField : public QLineEdit
{
    Q_OBJECT

public:
    explicit EditingField(QWidget* parent = nullptr);

    /// The editing ended: by Return, by Tab or Backtab, or because the focus went elsewhere.
    std::function<void(TextMovement)> onEndEditing;

    /// A dead key that waits for its letter goes, too.
    void clear();

    /// The colour of the placeholder, whatever a style sheet makes of it.
    void setPlaceholderColor(const QColor& color);

    /// Tells assistive tools, which see no field that shakes, why what was typed is refused. That
    /// is so until the user types on; each refusal is told, also one that is like the last.
    void sayWrong(const QString& reason);

    QVariant inputMethodQuery(Qt::InputMethodQuery property) const override;

    /// The same; the toolkit finds this one by its name.
    Q_INVOKABLE QVariant
    inputMethodQuery(Qt::InputMethodQuery property, const QVariant& argument) const;

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

    void endEditing(TextMovement movement) const;

private:
    void takeBackRefusal();
    bool compose(const QKeyEvent& event);
    void keepPlaceholderColor();

    QColor placeholderColor;
    QString refusal;
    QString descriptionBefore;
    KeyComposer composer;
};

} // namespace toolkit
