// A page of help from a local file, in the program's colours. Anchors of the page are followed in
// it; any other link is its owner's. Ctrl with plus, minus and 0 changes the size of the type. Main
// thread only.
#pragma once

#include <QTextBrowser>

#include <functional>
#include <string>

namespace ui {

class HelpPage : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpPage(QWidget* parent = nullptr);

    /// Shows the page in the file, from its top.
    void load(const std::string& path);

    /// A link that leads out of the page.
    std::function<void(const std::string& url)> onLink;

    /// By a tenth larger or smaller, within reason.
    void enlargeType();
    void shrinkType();

    /// As large as the desktop's again.
    void resetType();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void follow(const QUrl& link);
    void scaleType(double factor);

    double scale = 1.0;
};

} // namespace ui
