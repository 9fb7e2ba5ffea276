// A centred message of at most two lines. What does not fit is left out in the middle of the second
// line, so that the end of the message stays readable. Markup is shown as it is written.
#pragma once

#include <QLabel>

namespace locking {

class MessageLabel : public QLabel
{
    Q_OBJECT

public:
    explicit MessageLabel(QWidget* parent = nullptr);

    /// The height becomes that of the one line or the two that the message needs.
    void setMessage(const QString& message);

    /// Width that lines may have.
    void setLineWidth(int width);

    QStringList lines() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void layOut();
};

} // namespace locking
