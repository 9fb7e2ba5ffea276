#include "ui/popover/OptionsMenu.h"

#include "ui/views/Images.h"

#include <QKeyEvent>
#include <QProxyStyle>

namespace ui {

namespace {

constexpr auto IMAGE = "image";
constexpr auto KEY_EQUIVALENT = "keyEquivalent";

/// The pictures of a menu are smaller than the toolkit's.
class SmallIconStyle final : public QProxyStyle
{
public:
    SmallIconStyle() : QProxyStyle(QStringLiteral("fusion")) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget)
        const override
    {
        return metric == PM_SmallIconSize ? OptionsMenu::IMAGE_SIDE
                                          : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

QString textOf(const QAction& item, const char* property)
{
    return item.property(property).toString();
}

} // namespace

OptionsMenu::OptionsMenu(const Actions& actions, QWidget* parent) : QMenu(parent)
{
    auto* const style = new SmallIconStyle;
    style->setParent(this);
    setStyle(style);
    setAccessibleName(QStringLiteral("Options"));
    add({"Password Preferences", "PasswordMenuOption", ",", actions.changePreferences});
    add({"Lock Other Applications", "LockAnotherAppMenuOption", "+", actions.lockAnotherApp});
    addSeparator();
    add({"Help & Support", "HelpMenuOption", "h", actions.help});
    addSeparator();
    add({"Quit", "QuitApplicationMenuOption", "", actions.quitApplication});
    connect(this, &QMenu::hovered, this, [this](QAction* item) { willHighlightItem(item); });
}

void OptionsMenu::add(const Entry& entry)
{
    QString title = QString::fromLatin1(entry.title);
    title.replace(QLatin1Char('&'), QLatin1String("&&"));
    QAction* const item = addAction(requiredImage(QString::fromLatin1(entry.image)), title);
    item->setProperty(IMAGE, QString::fromLatin1(entry.image));
    item->setProperty(KEY_EQUIVALENT, QString::fromLatin1(entry.keyEquivalent));
    item->setShortcut(QKeySequence(QString::fromLatin1(entry.keyEquivalent)));
    item->setShortcutContext(Qt::WidgetShortcut);
    connect(item, &QAction::triggered, this, [action = entry.action] { action(); });
}

void OptionsMenu::willHighlightItem(QAction* item)
{
    for (QAction* each : actions()) {
        const QString name = textOf(*each, IMAGE);
        if (!name.isEmpty()) {
            each->setIcon(requiredImage(name));
        }
    }
    if (item == nullptr) {
        return;
    }
    const QString name = textOf(*item, IMAGE);
    if (!name.isEmpty()) {
        item->setIcon(requiredImage(name + QStringLiteral("_White")));
    }
}

void OptionsMenu::keyPressEvent(QKeyEvent* event)
{
    for (QAction* item : actions()) {
        const QString key = textOf(*item, KEY_EQUIVALENT);
        if (!key.isEmpty() && event->text().compare(key, Qt::CaseInsensitive) == 0) {
            close();
            item->trigger();
            return;
        }
    }
    QMenu::keyPressEvent(event);
}

void OptionsMenu::hideEvent(QHideEvent* event)
{
    QMenu::hideEvent(event);
    willHighlightItem(nullptr);
}

} // namespace ui
