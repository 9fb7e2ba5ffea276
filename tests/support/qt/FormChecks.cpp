#include "qt/FormChecks.h"

#include <QFile>
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
        } else if (!open.empty() && xml.attributes().value("name") == QLatin1String("accessibleName")) {
            widgets[open.back()].accessible = true;
        }
    }
    return widgets;
}

} // namespace

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
        if (!widget.accessible) {
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
        if (widget->accessibleName().isEmpty()) {
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

} // namespace support
