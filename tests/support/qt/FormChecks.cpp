#include "qt/FormChecks.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QSet>
#include <QWidget>
#include <QXmlStreamReader>

namespace support {

namespace {

struct FormWidget
{
    QString type;
    QString name;
    bool accessible = false;
};

/// Assistive tools speak the text of a control unless it has a name of its own.
bool saysWhatItIs(const QXmlStreamReader& xml)
{
    const auto property = xml.attributes().value("name");
    return xml.isStartElement() && xml.name() == QLatin1String("property") &&
           (property == QLatin1String("accessibleName") || property == QLatin1String("text") ||
            property == QLatin1String("windowTitle"));
}

/// Lines and pictures without a name, which assistive tools pass over.
bool isDecoration(const QString& type)
{
    return type == QLatin1String("QFrame") || type == QLatin1String("ui::ImageView");
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
            cut.push_back(widget.objectName().toStdString() + " \"" + text.toStdString() + '"');
        }
    };
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        check(*label, label->text());
    }
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        check(*button, button->text());
    }
    return cut;
}

} // namespace support
