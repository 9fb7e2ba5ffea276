// A line of text that says how its editing ended. Masked, it answers no input method's question
// about the text. A Return that is held counts once. Main thread only.
#pragma once

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

    QVariant inputMethodQuery(Qt::InputMethodQuery property) const override;

    /// The same; the toolkit finds this one by its name.
    Q_INVOKABLE QVariant
    inputMethodQuery(Qt::InputMethodQuery property, const QVariant& argument) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

    void endEditing(TextMovement movement) const;
};

} // namespace toolkit
