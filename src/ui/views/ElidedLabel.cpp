#include "ui/views/ElidedLabel.h"

#include "toolkit/ToolTip.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace ui {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 4, QLabel::minimumSizeHint().height()};
}

QString ElidedLabel::shownText() const
{
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width());
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole())
    );
    const Qt::Alignment sides = QStyle::visualAlignment(layoutDirection(), alignment());
    painter.drawText(contentsRect(), static_cast<int>(sides) | Qt::TextSingleLine, shownText());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        setToolTip(shownText() == text() ? QString() : toolkit::toolTipOf(text()));
    }
    return QLabel::event(event);
}

} // namespace ui
