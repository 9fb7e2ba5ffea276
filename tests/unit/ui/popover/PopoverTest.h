// The status item and its popover, on a desktop in memory and the toolkit's offscreen platform.
#pragma once

#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "qt/ThemedApplication.h"
#include "ui/popover/PopoverInterfacePresenter.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

class PopoverTest : public testing::Test
{
protected:
    /// What is on the screen.
    enum class Page
    {
        None,
        NoPassword,
        Password,
        Content,
        SeveralAtOnce,
    };

    PopoverTest()
    {
        fakes::installApplication(fake, CALCULATOR, "Calculator");
        fakes::installApplication(fake, MAHJONGG, "Mahjongg");
    }

    void TearDown() override
    {
        presenter.reset();
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    /// Puts the item up, as at the start of the program.
    void start()
    {
        presenter->onAddApplicationsRequest = [this] { requests.emplace_back("add"); };
        presenter->onChangePreferencesRequest = [this] { requests.emplace_back("preferences"); };
        presenter->onHelpRequest = [this] { requests.emplace_back("help"); };
        presenter->startService();
    }

    void startWith(const std::string& password, const std::string& applications = {})
    {
        store("Password", password);
        store("Applications", applications);
        start();
    }

    void store(const std::string& key, const std::string& text)
    {
        fakes::storeSecret(fake, key, text);
    }

    [[nodiscard]] std::string stored(const std::string& key) const
    {
        return fakes::secret(fake, key).value_or("nothing");
    }

    void settle()
    {
        fake.dispatchQueues.runAll();
        QCoreApplication::processEvents();
    }

    /// Has the item at that place, in the toolkit's pixels.
    void putItemAt(const QRect& place)
    {
        const double ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
        fake.statusBar.frame = platform::Rect{
            qRound(place.x() * ratio),
            qRound(place.y() * ratio),
            qRound(place.width() * ratio),
            qRound(place.height() * ratio)};
    }

    /// A request to show the popover, carried out.
    void open()
    {
        popup().showPopover();
        settle();
    }

    void clickItem()
    {
        fake.statusBar.item->onMouseDown();
        settle();
    }

    void clickElsewhere(std::uint64_t mask = platform::EVENT_MASK_LEFT_MOUSE_DOWN)
    {
        fake.eventMonitors.sendGlobalMouseDown(mask);
        settle();
    }

    /// Types into the password page and presses Return.
    void enter(const QString& password)
    {
        ASSERT_EQ(page(), Page::Password);
        field().setText(password);
        QTest::keyClick(&field(), Qt::Key_Return);
        settle();
    }

    void unlock() { enter(PASSWORD); }

    [[nodiscard]] ui::PopupSystem& popup() const { return *presenter->popupSystem; }

    [[nodiscard]] ui::Popover& window() const { return popup().popover; }

    [[nodiscard]] ui::PopoverViewController& controller() const
    {
        return *presenter->popoverViewController;
    }

    [[nodiscard]] ui::RequestPasswordViewController& gate() const
    {
        return *controller().requestPasswordViewController;
    }

    [[nodiscard]] ui::TextField& field() const { return *gate().passwordTextFieldOutlet; }

    [[nodiscard]] ui::TableView& table() const { return *controller().applicationsTableViewOutlet; }

    [[nodiscard]] QPushButton& button(const char* name) const
    {
        auto* const found = window().findChild<QPushButton*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    [[nodiscard]] Page page() const
    {
        if (!window().isVisible()) {
            return Page::None;
        }
        std::vector<Page> seen;
        if (isSeen(controller().noPasswordViewController)) {
            seen.push_back(Page::NoPassword);
        }
        if (isSeen(controller().requestPasswordViewController)) {
            seen.push_back(Page::Password);
        }
        if (anyOfContentIsSeen()) {
            seen.push_back(Page::Content);
        }
        return seen.empty() ? Page::None : seen.size() == 1 ? seen.front() : Page::SeveralAtOnce;
    }

    /// The names of the rows that the user sees.
    [[nodiscard]] std::vector<std::string> rows() const
    {
        std::vector<std::string> names;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            const ui::MyCell* cell = table().cellAt(row);
            names.push_back(
                cell == nullptr ? "not shown"
                                : cell->control<QLabel>(ui::MyCell::NAME_TAG).text().toStdString()
            );
        }
        return names;
    }

    [[nodiscard]] ui::ImageButtonView& removeButton(int row) const
    {
        return table().cellAt(row)->control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG);
    }

    fakes::Calls takeCalls() { return std::exchange(fake.calls, {}); }

    static constexpr auto PASSWORD = "secret";
    static constexpr auto CALCULATOR = "org.gnome.Calculator";
    static constexpr auto MAHJONGG = "org.gnome.Mahjongg";
    static constexpr auto BOTH = "org.gnome.Calculator;org.gnome.Mahjongg;";

    fakes::FakePlatform fake;
    std::unique_ptr<ui::PopoverInterfacePresenter> presenter =
        std::make_unique<ui::PopoverInterfacePresenter>();
    std::vector<std::string> requests;

private:
    template <typename Controller> static bool isSeen(const std::unique_ptr<Controller>& page)
    {
        return page != nullptr && page->isViewLoaded() && page->view().isVisible();
    }

    [[nodiscard]] bool anyOfContentIsSeen() const
    {
        const ui::PopoverViewController& content = controller();
        const std::vector<QWidget*> parts{
            content.tableHeaderViewOutlet.get(),
            content.tableViewScrollViewOutlet.get(),
            content.applicationsTableViewOutlet.get(),
            content.noItemViewOutlet.get(),
            content.addApplicationButtonOutlet.get(),
            content.menuButtonOutlet.get(),
            content.activateApplicationCheckboxOutlet.get(),
            content.startAtLoginCheckboxOutlet.get()};
        return std::any_of(parts.begin(), parts.end(), [](const QWidget* part) {
            return part->isVisible();
        });
    }
};
