// Prints the longest turn of the event loop while the picker of applications works with ten
// thousand of them: opening, typing a filter, scrolling, choosing, reloading. Fails when one used
// more of the processor than is allowed; how long it took besides is the machine's affair.
#include "picker/CrowdedDesktop.h"
#include "picker/TurnWatch.h"
#include "ui/views/Theme.h"
#include "ui/windows/selection/SelectApplicationsWindowPresenter.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

constexpr int APPLICATIONS = 10000;
constexpr int ROUNDS = 20;
constexpr double LONGEST_ALLOWED_MS = 50.0;

class Bench
{
public:
    /// False when a turn took longer than is allowed.
    bool run()
    {
        std::printf(
            "%d applications, longest turn of the event loop\n%-40s%10s%14s\n",
            APPLICATIONS,
            "",
            "ms",
            "of it own CPU"
        );
        measure("opening the window", [this] {
            untilListed([this] { presenter.startService(); });
        });
        measure("typing and deleting a filter", [this] { type(); });
        measure("going through the list by page", [this] { scroll(); });
        measure("choosing with Return", [this] { choose(); });
        measure("switching an option, which reloads", [this] { reload(); });
        return !tooLong;
    }

private:
    ui::ApplicationsSelectWindowController& controller()
    {
        return *presenter.applicationsSelectWindowController;
    }

    void measure(const char* what, const std::function<void()>& work)
    {
        watch.take();
        work();
        settle();
        const picker::LongestTurn longest = watch.take();
        tooLong = tooLong || longest.processor.count() > LONGEST_ALLOWED_MS;
        std::printf(
            "%-40s%10.1f%14.1f\n", what, longest.elapsed.count(), longest.processor.count()
        );
    }

    /// Lets everything happen that was begun, and everything be drawn.
    static void settle()
    {
        constexpr int QUIET_MS = 150;
        QElapsedTimer since;
        since.start();
        while (!since.hasExpired(QUIET_MS)) {
            QCoreApplication::processEvents();
        }
    }

    /// The same, once the list that the work asked for is there.
    void untilListed(const std::function<void()>& work)
    {
        const auto first = [this] {
            const auto& list = controller().originalApplicationEntities;
            return list.empty() ? nullptr : list.front();
        };
        const auto before = first();
        work();
        while (first() == nullptr || first() == before) {
            QCoreApplication::processEvents();
        }
        settle();
    }

    static void press(QWidget* receiver, int key, const QString& text = QString())
    {
        QCoreApplication::postEvent(
            receiver, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text)
        );
        constexpr int TURNS_BETWEEN_KEYS = 5;
        for (int turn = 0; turn < TURNS_BETWEEN_KEYS; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    void type()
    {
        const QString words = QStringLiteral("ter 99 écr 写 7");
        QWidget* const field = controller().filterTextfieldOutlet.get();
        for (const QChar character : words) {
            press(field, Qt::Key_unknown, character);
            if (character == ' ') {
                settle();
                for (int deleted = 0; deleted < 4; ++deleted) {
                    press(field, Qt::Key_Backspace);
                }
            }
        }
        settle();
        for (int deleted = 0; deleted < words.size(); ++deleted) {
            press(field, Qt::Key_Backspace);
        }
    }

    void scroll()
    {
        QWidget* const list = controller().applicationsTableViewOutlet.get();
        constexpr int PAGES = 300;
        for (int page = 0; page < PAGES; ++page) {
            press(list, Qt::Key_PageDown);
        }
    }

    void choose()
    {
        for (int round = 0; round < ROUNDS; ++round) {
            untilListed([this] {
                press(controller().applicationsTableViewOutlet.get(), Qt::Key_Return);
            });
        }
    }

    void reload()
    {
        for (int round = 0; round < ROUNDS; ++round) {
            untilListed([this] {
                controller().lockAdministrativeApplicationsCheckboxOutlet->click();
            });
        }
    }

    ui::SelectApplicationsWindowPresenter presenter;
    picker::TurnWatch watch;
    bool tooLong = false;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // what the windows do is measured, not a display
    QApplication application(argc, argv);
    ui::Theme::install(application);
    const picker::CrowdedDesktop desktop(APPLICATIONS);
    return Bench().run() ? 0 : 1;
}
