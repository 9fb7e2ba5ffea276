// How buttons behave in windows that are no dialogs of the toolkit: the default button stays the
// default one whoever has the keyboard, and Return presses the button that has it, once however
// long it is held. (The toolkit gives the look of the default button to each button that gets the
// keyboard, and takes it away with the keyboard.) Main thread only.
#pragma once

#include <QObject>

class QWidget;

namespace ui {

class FormButtons : public QObject
{
    Q_OBJECT

public:
    /// For all push buttons of a form that was loaded.
    static void install(QWidget& form);

    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace ui
