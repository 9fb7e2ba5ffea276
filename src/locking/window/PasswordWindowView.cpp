#include "locking/window/PasswordWindowView.h"

#include "locking/window/BorderlessKeyWindow.h"
#include "locking/window/KeyboardHint.h"
#include "platform/Platform.h"
#include "toolkit/QtIcon.h"
#include "toolkit/ScreenGeometry.h"
#include "ui_PasswordWindow.h"

namespace locking {

void PasswordWindowView::DeleteLater::operator()(BorderlessKeyWindow* window) const
{
    window->hide();
    window->deleteLater();
}

PasswordWindowView::PasswordWindowView()
    : outlets(std::make_unique<Ui::PasswordWindow>()),
      loadedWindow(new BorderlessKeyWindow)
{
    outlets->setupUi(loadedWindow.get());
    bounce = std::make_unique<toolkit::BounceAnimation>(*outlets->centralViewOutlet);
}

PasswordWindowView::~PasswordWindowView()
{
    outlets->passwordFieldOutlet->onEndEditing = nullptr;
    outlets->passwordFieldOutlet->clear();
}

void PasswordWindowView::place(const platform::Rect& frame)
{
    loadedWindow->setGeometry(toolkit::toolkitGeometry(frame));
    layOut();
}

void PasswordWindowView::layOut()
{
    style.emplace(loadedWindow->size());
    style->apply(*outlets);
}

void PasswordWindowView::clear()
{
    outlets->appIconOutlet->clear();
    outlets->appNameLabelOutlet->clear();
    outlets->passwordFieldOutlet->clear();
    outlets->errorMessageLabelOutlet->clear();
}

void PasswordWindowView::showMessage(const std::string& message, const platform::IconHandle& icon)
{
    const QString text = QString::fromStdString(message);
    outlets->appNameLabelOutlet->setMessage(text);
    outlets->appNameLabelOutlet->setAccessibleName(text);
    outlets->appIconOutlet->setPixmap(
        style->picture(toolkit::QtIcon::of(icon), loadedWindow->devicePixelRatioF())
    );
}

void PasswordWindowView::showKeyboardStatus()
{
    showKeyboardHint(*outlets, platform::current().keyboardStatus);
}

void PasswordWindowView::showError(const std::string& message)
{
    outlets->errorMessageLabelOutlet->setText(QString::fromStdString(message));
    outlets->passwordFieldOutlet->sayWrong(
        platform::current().keyboardStatus.capsLockOn()
            ? QStringLiteral("Wrong password. %1").arg(outlets->capsLockLabel->text())
            : QStringLiteral("Wrong password")
    );
    bounce->start(style->bounceDepth());
}

void PasswordWindowView::drawUnseen()
{
    layOut();
    showMessage("A", nullptr);
    outlets->passwordFieldOutlet->setText("A");
    loadedWindow->grab();
}

} // namespace locking
