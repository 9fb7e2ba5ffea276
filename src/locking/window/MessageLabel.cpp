#include "locking/window/MessageLabel.h"

#include <QPainter>
#include <QTextLayout>

namespace locking {

MessageLabel::MessageLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void MessageLabel::setMessage(const QString& message)
{
    setText(message);
    layOut();
}

void MessageLabel::setLineWidth(int width)
{
    setFixedWidth(width);
    layOut();
}

void MessageLabel::layOut()
{
    setFixedHeight(fontMetrics().lineSpacing() * static_cast<int>(qMax(lines().size(), 1)));
}

QStringList MessageLabel::lines() const
{
    const QString message = text().simplified();
    if (message.isEmpty()) {
        return {};
    }
    QTextLayout layout(message, font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine first = layout.createLine();
    first.setLineWidth(width());
    const int firstLength = first.textLength();
    layout.endLayout();

    QStringList result(message.left(firstLength).trimmed());
    const QString rest = message.mid(firstLength).trimmed();
    if (!rest.isEmpty()) {
        result << fontMetrics().elidedText(rest, Qt::ElideMiddle, width());
    }
    return result;
}

void MessageLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(palette().color(foregroundRole()));
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // that of the name, not of the desktop
    QRect place(0, 0, width(), fontMetrics().lineSpacing());
    for (const QString& line : lines()) {
        painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, line);
        place.translate(0, place.height());
    }
}

} // namespace locking
