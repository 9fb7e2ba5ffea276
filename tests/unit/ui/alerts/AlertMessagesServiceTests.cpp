#include "AlertsTest.h"
#include "qt/QtEnvironment.h"
#include "ui/alerts/AlertMessagesService.h"
#include "ui/views/PanelWindow.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>

#include <memory>
#include <thread>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QApplication>);

/// A window with a field that has the keyboard.
struct Window
{
    Window()
    {
        field.resize(200, 30);
        panel.resize(200, 30);
        panel.makeKeyAndOrderFront();
        field.setFocus();
        QCoreApplication::processEvents();
    }

    /// Whether a key of the user's arrives.
    bool takesKeys()
    {
        field.clear();
        QTest::keyClick(panel.windowHandle(), Qt::Key_A);
        return field.text() == "a";
    }

    ui::PanelWindow panel;
    QLineEdit field{&panel};
};

class AlertMessages : public AlertsTest
{
protected:
    void ask(const std::vector<std::string>& options, QWidget* window = nullptr)
    {
        service.showAlertWithOptions(
            "Title",
            "Message",
            0,
            options,
            [this](int response) { responses.push_back(response); },
            window
        );
    }

    ui::AlertMessagesService service;
    std::vector<int> responses;
};

using Texts = std::vector<std::string>;

} // namespace

TEST_F(AlertMessages, AreShownLaterOnTheMainQueueAndNobodyWaits)
{
    service.showAlert("Title", "Message", 1, nullptr);
    EXPECT_TRUE(shownAlerts().empty());

    const QMessageBox& alert = shown();
    EXPECT_EQ(alert.text(), "Title");
    EXPECT_EQ(alert.informativeText(), "Message");
}

TEST_F(AlertMessages, MayBeAskedForOnAnyThread)
{
    std::thread([this] { service.showAlert("Title", "Message", 1, nullptr); }).join();
    EXPECT_EQ(shown().text(), "Title");
}

TEST_F(AlertMessages, WithoutAWindowBlockTheWholeProgram)
{
    Window window;
    ASSERT_TRUE(window.takesKeys());
    service.showAlert("Title", "Message", 2, nullptr);

    EXPECT_EQ(shown().windowModality(), Qt::ApplicationModal);
    EXPECT_FALSE(window.takesKeys());
}

TEST_F(AlertMessages, WithAWindowAreASheetOnItAndBlockNoOther)
{
    Window window;
    Window other;
    service.showAlert("Title", "Message", 2, &window.panel);

    const QMessageBox& alert = shown();
    EXPECT_EQ(alert.windowModality(), Qt::WindowModal);
    EXPECT_EQ(alert.parentWidget(), &window.panel);
    EXPECT_FALSE(window.takesKeys());
    EXPECT_TRUE(other.takesKeys());
}

TEST_F(AlertMessages, GiveTheWindowBackWhenTheyAreAnswered)
{
    Window window;
    service.showAlert("Title", "Message", 2, &window.panel);
    shown().buttons().first()->click();

    EXPECT_TRUE(window.takesKeys());
}

TEST_F(AlertMessages, ShowAPictureForEachType)
{
    const std::vector<const char*> pictures{"AlertWarning", "AlertInformational", "AlertCritical"};
    for (int type = 0; type < 3; ++type) {
        service.showAlert("Title", "Message", type, nullptr);
        QMessageBox& alert = shown();
        for (std::size_t other = 0; other < pictures.size(); ++other) {
            EXPECT_EQ(showsPicture(alert, pictures[other]), static_cast<std::size_t>(type) == other)
                << type;
        }
        alert.buttons().first()->click();
    }
}

TEST_F(AlertMessages, OfferTheOptionsInTheirOrderTheFirstByDefault)
{
    ask({"Keep", "Replace", "Cancel"});
    const QMessageBox& alert = shown();
    EXPECT_EQ(buttonTexts(alert), (Texts{"Keep", "Replace", "Cancel"}));
    EXPECT_EQ(alert.defaultButton()->text(), "Keep");
}

TEST_F(AlertMessages, AnswerFromOneThousandOn)
{
    for (int position = 0; position < 3; ++position) {
        ask({"Keep", "Replace", "Cancel"});
        shown().buttons().at(position)->click();
    }
    EXPECT_EQ(responses, (std::vector{1000, 1001, 1002}));
}

TEST_F(AlertMessages, WithoutOptionsShowTheDefaultButtonWhichAnswersOneThousand)
{
    ask({});
    QMessageBox& alert = shown();
    ASSERT_EQ(alert.buttons().size(), 1);
    EXPECT_EQ(alert.buttons().first(), alert.button(QMessageBox::Ok));
    alert.buttons().first()->click();
    EXPECT_EQ(responses, std::vector{1000});
}

TEST_F(AlertMessages, SheetsAnswerToo)
{
    Window window;
    ask({"Keep", "Replace"}, &window.panel);
    shown().buttons().at(1)->click();
    EXPECT_EQ(responses, std::vector{1001});
}

TEST_F(AlertMessages, ReturnAnswersWithTheFirstOption)
{
    ask({"Keep", "Replace"});
    QTest::keyClick(shown().windowHandle(), Qt::Key_Return);
    EXPECT_EQ(responses, std::vector{1000});
}

TEST_F(AlertMessages, EscapeAnswersTheOnlyButton)
{
    ask({"Fine"});
    QTest::keyClick(shown().windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(responses, std::vector{1000});
}

TEST_F(AlertMessages, EscapeAnswersTheLastOfSeveralOptions)
{
    ask({"Keep", "Replace", "Cancel"});
    QTest::keyClick(shown().windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(responses, std::vector{1002});
}

TEST_F(AlertMessages, ClosingTheAlertAnswersAsEscapeDoes)
{
    ask({"Keep", "Replace", "Cancel"});
    shown().close();
    EXPECT_EQ(responses, std::vector{1002});
}

TEST_F(AlertMessages, ShowAllTextsAsTheyAreWritten)
{
    service.showAlertWithOptions(
        "<b>Bold</b> & more", "<i>Slanted</i>\n\n& a line", 1, {"Save & Quit"}, {}, nullptr
    );
    const QMessageBox& alert = shown();
    Texts texts;
    for (const QLabel* label : alert.findChildren<QLabel*>()) {
        if (!label->text().isEmpty()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            texts.push_back(label->text().toStdString());
        }
    }
    EXPECT_EQ(texts, (Texts{"<b>Bold</b> & more", "<i>Slanted</i>\n\n& a line"}));
    const QAbstractButton& button = *alert.buttons().first();
    EXPECT_TRUE(button.shortcut().isEmpty()); // nothing became the mark of a mnemonic
    EXPECT_EQ(button.text().toStdString(), "Save && Quit");
}

TEST_F(AlertMessages, OutliveAWindowThatWasClosedBeforeTheyAreShown)
{
    Window window;
    ask({}, &window.panel);
    window.panel.close();

    QMessageBox& alert = shown();
    EXPECT_EQ(alert.windowModality(), Qt::ApplicationModal);
    alert.buttons().first()->click();
    EXPECT_EQ(responses, std::vector{1000});
}

TEST_F(AlertMessages, OutliveAWindowThatIsGoneBeforeTheyAreShown)
{
    auto window = std::make_unique<Window>();
    ask({}, &window->panel);
    window.reset();

    shown().buttons().first()->click();
    EXPECT_EQ(responses, std::vector{1000});
}

TEST_F(AlertMessages, GoWithTheirWindow)
{
    auto window = std::make_unique<Window>();
    ask({}, &window->panel);
    shown();
    window.reset();

    EXPECT_TRUE(shownAlerts().empty());
    EXPECT_TRUE(responses.empty());
}

TEST_F(AlertMessages, AreDismissedWhenTheirWindowCloses)
{
    Window window;
    ask({"Keep", "Cancel"}, &window.panel);
    shown();
    window.panel.close();

    EXPECT_TRUE(shownAlerts().empty());
    EXPECT_EQ(responses, std::vector{1001});
}

TEST_F(AlertMessages, MayAskForAnotherInTheirAnswer)
{
    service.showAlertWithOptions(
        "First", "", 1, {}, [this](int) { service.showAlert("Second", "", 1, nullptr); }, nullptr
    );
    shown().buttons().first()->click();
    EXPECT_EQ(shown().text(), "Second");
}

TEST_F(AlertMessages, LeaveNothingBehindWhenTheyAreAnswered)
{
    service.showAlert("Title", "Message", 1, nullptr);
    const QPointer<QMessageBox> alert = &shown();
    alert->buttons().first()->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alert.isNull());
}

TEST_F(AlertMessages, ALocalNotificationIsHandedOverAtOnceWithTheDefaultSound)
{
    service.showLocalNotification("Title", "Message");

    const platform::UserNotification expected{
        .title = "Title",
        .informativeText = "Message",
        .hasActionButton = false,
        .defaultSound = true,
    };
    EXPECT_EQ(fake.userNotifications.delivered, std::vector{expected});
    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}
