// Brings to one window of this program the keys that the toolkit delivers to another: it knows
// captured keys by the window that it believes to have the focus, not by the one that they were
// sent to. From its making to its end. Main thread.
#pragma once

#include <QObject>

class QWidget;

namespace locking {

class StrayKeys : public QObject
{
    Q_OBJECT

public:
    /// Its owner, which must outlive this, takes them.
    explicit StrayKeys(const QWidget& owner);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    const QWidget& owner;
};

} // namespace locking
