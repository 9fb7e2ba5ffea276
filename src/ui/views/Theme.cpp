#include "ui/views/Theme.h"

#include "platform/Windows.h"
#include "toolkit/QtColor.h"
#include "ui/views/ThemeStyle.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QPalette>

#include <array>
#include <utility>

namespace ui {

const QColor Theme::GROUND_LOW(42, 43, 47);
const QColor Theme::GROUND_HIGH(94, 97, 106);
const QColor Theme::LINE(99, 102, 108);
const QColor Theme::BORDER(150, 154, 163);
const QColor Theme::BORDER_ON_LIGHT(190, 193, 200);
const QColor Theme::TEXT(246, 247, 249);
const QColor Theme::QUIET(221, 224, 230);
const QColor Theme::ACCENT(52, 104, 198);
const QColor Theme::FOCUS(150, 188, 255);
const QColor Theme::DISABLED(150, 153, 160);

namespace {

const QColor HEADER(150, 150, 150); // the popover's title bar, with dark text on it

constexpr double TITLE_SCALE = 1.5;
constexpr double HEADING_SCALE = 1.2;
constexpr double SMALL_SCALE = 0.9;

QColor groundMiddle()
{
    return toolkit::colorOf(platform::LOCK_COLOR);
}

QString css(const QColor& color)
{
    return QStringLiteral("rgba(%1, %2, %3, %4)")
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue())
        .arg(color.alpha());
}

/// A size of the type scale, which stands on what the user has chosen for the desktop.
QString type(const QFont& base, double scale)
{
    return base.pointSizeF() > 0.0 ? QStringLiteral("%1pt").arg(base.pointSizeF() * scale)
                                   : QStringLiteral("%1px").arg(qRound(base.pixelSize() * scale));
}

QString styleSheet(const QFont& font)
{
    constexpr int HANDLE_OPACITY = 90;
    constexpr int BUTTON_OPACITY = 14;
    constexpr int BUTTON_HOVER_OPACITY = 26; // at more, its text is hard to read on GROUND_HIGH
    constexpr int ACCENT_HOVER = 106;        // per cent of the accent's light, for the same reason
    constexpr int ACCENT_PRESSED = 112;      // by how many per cent its light is divided
    constexpr int FIELD_OPACITY = 70;
    constexpr int FOOTER_OPACITY = 40;
    const QColor light(255, 255, 255, BUTTON_OPACITY);
    const std::array words{
        // a word before those that it begins with
        std::pair{QStringLiteral("@accentHover"), css(Theme::ACCENT.lighter(ACCENT_HOVER))},
        std::pair{QStringLiteral("@accentPressed"), css(Theme::ACCENT.darker(ACCENT_PRESSED))},
        std::pair{QStringLiteral("@accent"), css(Theme::ACCENT)},
        std::pair{QStringLiteral("@borderOnLight"), css(Theme::BORDER_ON_LIGHT)},
        std::pair{QStringLiteral("@border"), css(Theme::BORDER)},
        std::pair{QStringLiteral("@buttonHover"), css(QColor(255, 255, 255, BUTTON_HOVER_OPACITY))},
        std::pair{QStringLiteral("@buttonPressed"), css(QColor(0, 0, 0, FIELD_OPACITY))},
        std::pair{QStringLiteral("@button"), css(light)},
        std::pair{QStringLiteral("@disabled"), css(Theme::DISABLED)},
        std::pair{QStringLiteral("@field"), css(QColor(0, 0, 0, FIELD_OPACITY))},
        std::pair{QStringLiteral("@focus"), css(Theme::FOCUS)},
        std::pair{QStringLiteral("@footer"), css(QColor(0, 0, 0, FOOTER_OPACITY))},
        std::pair{QStringLiteral("@handle"), css(QColor(255, 255, 255, HANDLE_OPACITY))},
        std::pair{QStringLiteral("@header"), css(HEADER)},
        std::pair{QStringLiteral("@heading"), type(font, HEADING_SCALE)},
        std::pair{QStringLiteral("@innerRadius"), QStringLiteral("%1px").arg(Theme::RADIUS - 1)},
        std::pair{QStringLiteral("@line"), css(Theme::LINE)},
        std::pair{QStringLiteral("@low"), css(Theme::GROUND_LOW)},
        std::pair{QStringLiteral("@middle"), css(groundMiddle())},
        std::pair{QStringLiteral("@quiet"), css(Theme::QUIET)},
        std::pair{QStringLiteral("@radius"), QStringLiteral("%1px").arg(Theme::RADIUS)},
        std::pair{QStringLiteral("@small"), type(font, SMALL_SCALE)},
        std::pair{QStringLiteral("@text"), css(Theme::TEXT)},
        std::pair{QStringLiteral("@title"), type(font, TITLE_SCALE)},
    };
    QFile file(QStringLiteral(":/theme.qss"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QString sheet = QString::fromUtf8(file.readAll());
    for (const auto& [word, value] : words) {
        sheet.replace(word, value);
    }
    return sheet;
}

QPalette palette()
{
    QPalette colors(groundMiddle());
    for (const QPalette::ColorRole role :
         {QPalette::WindowText,
          QPalette::Text,
          QPalette::ButtonText,
          QPalette::ToolTipText,
          QPalette::HighlightedText,
          QPalette::BrightText}) {
        colors.setColor(role, Theme::TEXT);
        colors.setColor(QPalette::Disabled, role, Theme::DISABLED);
    }
    colors.setColor(QPalette::PlaceholderText, Theme::QUIET);
    colors.setColor(QPalette::Base, Theme::GROUND_LOW);
    colors.setColor(QPalette::AlternateBase, groundMiddle());
    colors.setColor(QPalette::ToolTipBase, Theme::GROUND_LOW);
    colors.setColor(QPalette::Highlight, Theme::ACCENT);
    colors.setColor(QPalette::Link, Theme::FOCUS);
    colors.setColor(QPalette::LinkVisited, Theme::FOCUS);
    return colors;
}

} // namespace

void Theme::install(QApplication& application)
{
    QApplication::setStyle(new ThemeStyle); // the application's from here on
    QApplication::setPalette(palette());    // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
    application.setStyleSheet(styleSheet(QApplication::font()));
}

} // namespace ui
