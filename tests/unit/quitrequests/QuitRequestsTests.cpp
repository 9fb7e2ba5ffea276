#include "linux/qt/QuitRequests.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimer>

#include <array>

#include <gtest/gtest.h>

namespace {

constexpr int END_OF_TEST = 7;

class QuitRequests : public testing::Test
{
protected:
    std::array<char, 5> name{"test"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    int count = 1;
    QGuiApplication application{count, arguments.data()};
};

} // namespace

TEST_F(QuitRequests, EveryRequestIsRefusedWhileTheAnswerIsNo)
{
    int asked = 0;
    const qt::QuitRequests requests(application, [&] {
        ++asked;
        return false;
    });
    QTimer::singleShot(0, [] {
        QCoreApplication::quit();
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qGuiApp, &quit);
        EXPECT_FALSE(quit.isAccepted());
        QTimer::singleShot(0, [] { QCoreApplication::exit(END_OF_TEST); });
    });

    EXPECT_EQ(QGuiApplication::exec(), END_OF_TEST) << "the event loop must have gone on";
    EXPECT_EQ(asked, 2);
}

TEST_F(QuitRequests, RequestIsFollowedWhenTheAnswerIsYes)
{
    const qt::QuitRequests requests(application, [] { return true; });
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });

    EXPECT_EQ(QGuiApplication::exec(), 0);
}
