#include "ui/windows/help/HelpWindowController.h"

#include "platform/Bundles.h"
#include "platform/Fatal.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "ui/views/Theme.h"
#include "ui_HelpWindow.h"

namespace ui {

namespace {

/// The page brings its structure, the program the colours.
QString pageStyle()
{
    return QStringLiteral("h1, h2, h3, p, li, td { color: %1; } a { color: %2; }"
                          "h1 { margin-bottom: 4px; } h2 { margin-top: 20px; margin-bottom: 4px; }"
                          "p, li { line-height: 130%; }")
        .arg(Theme::TEXT.name(), Theme::FOCUS.name());
}

} // namespace

std::unique_ptr<PanelWindow> HelpWindowController::loadWindow()
{
    auto window = std::make_unique<PanelWindow>();
    Ui::HelpWindow form;
    form.setupUi(window.get());
    webviewOutlet = form.webviewOutlet;
    QObject::connect(form.contactSupportButton, &QPushButton::clicked, window.get(), [this] {
        contactSupportButtonClick();
    });
    return window;
}

void HelpWindowController::windowDidLoad()
{
    window().setBackgroundColor(Theme::GROUND_HIGH);
    loadPage();
}

void HelpWindowController::loadPage()
{
    const std::optional<std::string> path =
        platform::current().bundles.pathForResource("Help", "html");
    if (!path) {
        platform::fatal("the help page is missing");
    }
    QTextBrowser& page = *webviewOutlet;
    page.document()->setDefaultStyleSheet(pageStyle());
    page.setOpenLinks(false);
    QObject::connect(&page, &QTextBrowser::anchorClicked, &page, [&page](const QUrl& link) {
        if (link.isRelative() || link.isLocalFile()) {
            page.scrollToAnchor(link.fragment());
        } else {
            platform::current().workspace.openUrl(link.toString().toStdString());
        }
    });
    page.setSource(QUrl::fromLocalFile(QString::fromStdString(*path)));
    page.moveCursor(QTextCursor::Start);
}

void HelpWindowController::showWindowService()
{
    window().makeKeyAndOrderFront();
}

void HelpWindowController::focus()
{
    window().makeKeyAndOrderFront();
}

void HelpWindowController::contactSupportButtonClick()
{
    const std::function<void()> listener = onContactSupport;
    if (listener) {
        listener();
    }
}

} // namespace ui
