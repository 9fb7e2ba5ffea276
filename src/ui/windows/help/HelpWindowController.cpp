#include "ui/windows/help/HelpWindowController.h"

#include "platform/Bundles.h"
#include "platform/Call.h"
#include "platform/Fatal.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "ui/views/Theme.h"
#include "ui_HelpWindow.h"

#include <QScreen>

#include <algorithm>

namespace ui {

namespace {

/// A page of a book: about 75 characters a line, somewhat higher than wide.
QSize pageSize(const QFontMetrics& type)
{
    constexpr int CHARACTERS = 75;
    constexpr int LINES = 40;
    return {CHARACTERS * type.averageCharWidth(), LINES * type.lineSpacing()};
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
    window().resize(window()
                        .size()
                        .expandedTo(pageSize(window().fontMetrics()))
                        .boundedTo(window().screen()->availableSize() * 9 / 10));
    loadPage();
}

void HelpWindowController::loadPage()
{
    const std::optional<std::string> path =
        platform::current().bundles.pathForResource("Help", "html");
    if (!path) {
        platform::fatal("the help page is missing");
    }
    webviewOutlet->onLink = [](const std::string& url) {
        platform::current().workspace.openUrl(url);
    };
    webviewOutlet->load(*path);
    webviewOutlet->setFocus();
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
    platform::call(onContactSupport);
}

} // namespace ui
