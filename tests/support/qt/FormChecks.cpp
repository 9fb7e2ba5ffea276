#include "qt/FormChecks.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QSet>
#include <QWidget>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace support {

namespace {

struct FormWidget
{
    QString type;
    QString name;
    bool accessible = false;
};

/// Assistive tools speak the text of a control unless it has a name of its own. A control with a
/// tag is filled in by a list, row by row.
bool saysWhatItIs(const QXmlStreamReader& xml)
{
    const auto property = xml.attributes().value("name");
    return xml.isStartElement() && xml.name() == QLatin1String("property") &&
           (property == QLatin1String("accessibleName") || property == QLatin1String("text") ||
            property == QLatin1String("windowTitle") || property == QLatin1String("tag"));
}

/// What assistive tools pass over when it has no name: lines, pictures, and what only holds others.
bool isDecoration(const QString& type)
{
    return type == QLatin1String("QFrame") || type == QLatin1String("ui::ImageView") ||
           type == QLatin1String("QWidget") ||
           type == QLatin1String("ui::FilterFieldBackgroundView");
}

/// The widgets of the form, each with the properties of its own.
std::vector<FormWidget> widgetsOf(QXmlStreamReader& xml)
{
    std::vector<FormWidget> widgets;
    std::vector<std::size_t> open;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("widget")) {
            open.push_back(widgets.size());
            const QXmlStreamAttributes attributes = xml.attributes();
            widgets.push_back(
                {attributes.value("class").toString(), attributes.value("name").toString()}
            );
        } else if (xml.isEndElement() && xml.name() == QLatin1String("widget")) {
            open.pop_back();
        } else if (!open.empty() && saysWhatItIs(xml)) {
            widgets[open.back()].accessible = true;
        }
    }
    return widgets;
}

QString spokenName(QWidget& widget)
{
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
    return interface == nullptr ? QString() : interface->text(QAccessible::Name);
}

/// What a user sees and uses, not what holds it.
bool isControl(const QWidget& widget)
{
    return widget.inherits("QLabel") || widget.inherits("QAbstractButton") ||
           widget.inherits("QLineEdit") || widget.inherits("QAbstractScrollArea") ||
           widget.inherits("ui::ImageView");
}

/// A list without rows is a mere ground: a text on it may say why nothing is there.
bool isGround(const QWidget& widget)
{
    const auto* const list = qobject_cast<const QAbstractItemView*>(&widget);
    return list != nullptr && list->model() != nullptr && list->model()->rowCount() == 0;
}

/// Parts of a list or a page may be scrolled out of sight.
bool isScrolled(const QWidget& widget, const QWidget& window)
{
    const QWidget* parent = widget.parentWidget();
    while (parent != nullptr && parent != &window && !parent->inherits("QAbstractScrollArea")) {
        parent = parent->parentWidget();
    }
    return parent != nullptr && parent != &window;
}

std::vector<QWidget*> controlsOf(QWidget& window)
{
    std::vector<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && isControl(*widget) && !isScrolled(*widget, window)) {
            controls.push_back(widget);
        }
    }
    return controls;
}

QRect placeOf(const QWidget& widget, const QWidget& window)
{
    return {widget.mapTo(&window, QPoint(0, 0)), widget.size()};
}

/// The controls that Tab reaches, in that order, from the first of the window on.
std::vector<QWidget*> tabStopsOf(QWidget& window)
{
    std::vector<QWidget*> stops;
    for (QWidget* widget = window.nextInFocusChain(); widget != &window;
         widget = widget->nextInFocusChain()) {
        const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (takesTab && widget->isVisible() && widget->isEnabled() &&
            !isScrolled(*widget, window)) {
            stops.push_back(widget);
        }
    }
    return stops;
}

std::string said(const QSize& size)
{
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

QString lengthened(const QString& text)
{
    // in words of the same lengths as there are, so that lines can break as they did
    const QString more = text.left((text.size() * 2 + 4) / 5).trimmed();
    return text.isEmpty() ? text : text + QLatin1Char(' ') + more;
}

} // namespace

void lengthenTexts(QWidget& window)
{
    for (auto* const label : window.findChildren<QLabel*>()) {
        label->setText(lengthened(label->text()));
    }
    for (auto* const button : window.findChildren<QAbstractButton*>()) {
        button->setText(lengthened(button->text()));
    }
}

std::vector<std::string> troublesOfForm(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        return {"cannot be opened: " + path};
    }
    QXmlStreamReader xml(&file);
    const std::vector<FormWidget> widgets = widgetsOf(xml);
    if (xml.hasError() || widgets.empty()) {
        return {"is not a form: " + path};
    }
    std::vector<std::string> troubles;
    const QRegularExpression madeUp("^$|_\\d+$|^(label|lineEdit|pushButton|widget|frame)$");
    QSet<QString> names;
    for (const FormWidget& widget : widgets) {
        const std::string who = (widget.type + " \"" + widget.name + "\"").toStdString();
        if (madeUp.match(widget.name).hasMatch()) {
            troubles.push_back(who + " has no name of its own");
        }
        if (names.contains(widget.name)) {
            troubles.push_back(who + " is there twice");
        }
        names.insert(widget.name);
        if (!widget.accessible && !isDecoration(widget.type)) {
            troubles.push_back(who + " has no accessible name");
        }
    }
    return troubles;
}

std::vector<std::string> troublesOfWindow(QWidget& window)
{
    QSet<QWidget*> waiting;
    std::vector<std::string> troubles;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus) {
            continue;
        }
        waiting.insert(widget);
        if (spokenName(*widget).isEmpty()) {
            troubles.push_back(widget->objectName().toStdString() + " has no accessible name");
        }
    }
    QWidget* reached = &window;
    do {
        reached = reached->nextInFocusChain();
        if ((reached->focusPolicy() & Qt::TabFocus) != 0) {
            waiting.remove(reached);
        }
    } while (reached != &window);
    for (const QWidget* widget : waiting) {
        troubles.push_back(widget->objectName().toStdString() + " is not reached by Tab");
    }
    return troubles;
}

std::vector<std::string> cutTextsOf(const QWidget& window)
{
    std::vector<std::string> cut;
    const auto check = [&cut](const QWidget& widget, const QString& text) {
        const QSize wanted =
            widget.hasHeightForWidth()
                ? QSize(widget.minimumSizeHint().width(), widget.heightForWidth(widget.width()))
                : widget.sizeHint();
        const bool fits = widget.width() >= wanted.width() && widget.height() >= wanted.height();
        if (widget.isVisible() && !text.isEmpty() && !fits) {
            cut.push_back(
                widget.objectName().toStdString() + " \"" + text.toStdString() + "\" has " +
                said(widget.size()) + " of " + said(wanted)
            );
        }
    };
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->inherits("ui::ElidedLabel")) { // cuts its text itself, and says so
            check(*label, label->text());
        }
    }
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        check(*button, button->text());
    }
    return cut;
}

std::vector<std::string> misplacedIn(QWidget& window)
{
    std::vector<std::string> troubles;
    const std::vector<QWidget*> controls = controlsOf(window);
    for (auto one = controls.begin(); one != controls.end(); ++one) {
        const std::string name = (*one)->objectName().toStdString();
        const QRect place = placeOf(**one, window);
        if (!window.rect().contains(place)) {
            troubles.push_back(name + " is outside");
        }
        for (auto other = std::next(one); other != controls.end(); ++other) {
            const bool related = isGround(**one) || isGround(**other) ||
                                 (*one)->isAncestorOf(*other) || (*other)->isAncestorOf(*one);
            if (!related && place.intersects(placeOf(**other, window))) {
                troubles.push_back(name + " meets " + (*other)->objectName().toStdString());
            }
        }
    }
    return troubles;
}

std::vector<std::string> tabJumpsOf(QWidget& window)
{
    std::vector<std::string> jumps;
    int lowest = -1;
    for (const QWidget* stop : tabStopsOf(window)) {
        const QRect place = placeOf(*stop, window);
        if (place.bottom() < lowest) {
            jumps.push_back(stop->objectName().toStdString() + " comes late");
        }
        lowest = std::max(lowest, place.top());
    }
    return jumps;
}

} // namespace support
