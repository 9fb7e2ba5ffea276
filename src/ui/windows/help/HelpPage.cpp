#include "ui/windows/help/HelpPage.h"

#include "platform/Call.h"
#include "ui/views/Theme.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>

namespace ui {

namespace {

constexpr double STEP = 1.1;
constexpr double SMALLEST = 0.5;
constexpr double LARGEST = 4.0;
constexpr int MARGIN = 2 * Theme::GRID;
constexpr int INDENT = 3 * Theme::GRID;

/// The page brings its structure, the program its colours.
QString pageStyle()
{
    return QStringLiteral("h1, h2, h3, p, li, code { color: %1; } a { color: %2; }"
                          "h1 { margin-top: 0; margin-bottom: 8px; }"
                          "h2 { margin-top: 28px; margin-bottom: 8px; }"
                          "h3 { margin-top: 16px; margin-bottom: 4px; }"
                          "p { margin-top: 4px; margin-bottom: 8px; }"
                          "ul, ol { margin-top: 4px; margin-bottom: 8px; }"
                          "li { margin-bottom: 4px; }"
                          "p, li { line-height: 130%; }")
        .arg(Theme::TEXT.name(), Theme::FOCUS.name());
}

QFont scaled(const QFont& font, double factor)
{
    QFont result = font;
    if (font.pointSizeF() > 0.0) {
        result.setPointSizeF(font.pointSizeF() * factor);
    } else {
        result.setPixelSize(qRound(font.pixelSize() * factor));
    }
    return result;
}

} // namespace

HelpPage::HelpPage(QWidget* parent) : QTextBrowser(parent)
{
    setOpenLinks(false);
    document()->setDefaultStyleSheet(pageStyle());
    document()->setDocumentMargin(MARGIN);
    document()->setIndentWidth(INDENT);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { follow(link); });

    const auto add = [this](const QKeySequence& keys, void (HelpPage::*action)()) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(QKeySequence(Qt::CTRL | Qt::Key_Plus), &HelpPage::enlargeType);
    add(QKeySequence(Qt::CTRL | Qt::Key_Equal), &HelpPage::enlargeType); // plus without Shift
    add(QKeySequence(Qt::CTRL | Qt::Key_Minus), &HelpPage::shrinkType);
    add(QKeySequence(Qt::CTRL | Qt::Key_0), &HelpPage::resetType);
}

void HelpPage::load(const std::string& path)
{
    setSource(QUrl::fromLocalFile(QString::fromStdString(path)));
    moveCursor(QTextCursor::Start);
}

void HelpPage::follow(const QUrl& link)
{
    if (link.matches(source(), QUrl::RemoveFragment)) {
        scrollToAnchor(link.fragment());
        return;
    }
    platform::call(onLink, link.toString(QUrl::FullyEncoded).toStdString());
}

void HelpPage::enlargeType()
{
    scaleType(std::min(scale * STEP, LARGEST));
}

void HelpPage::shrinkType()
{
    scaleType(std::max(scale / STEP, SMALLEST));
}

void HelpPage::resetType()
{
    scaleType(1.0);
}

void HelpPage::scaleType(double factor)
{
    // What is at the top stays there.
    const int line = cursorForPosition(QPoint(MARGIN, 0)).position();
    scale = factor;
    setFont(scaled(window()->font(), scale));
    QTextCursor top(document());
    top.setPosition(line);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(top).top());
}

void HelpPage::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::MoveToStartOfLine) ||
        event->matches(QKeySequence::MoveToStartOfDocument)) {
        verticalScrollBar()->setValue(verticalScrollBar()->minimum());
    } else if (event->matches(QKeySequence::MoveToEndOfLine) || event->matches(QKeySequence::MoveToEndOfDocument)) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    } else {
        QTextBrowser::keyPressEvent(event);
    }
}

} // namespace ui
