// What the program's style does that the toolkit's own does not.
#include "ui/views/PanelWindow.h"
#include "ui/views/SwitchView.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <vector>

#include <gtest/gtest.h>

namespace {

class Mnemonics : public testing::Test
{
protected:
    Mnemonics()
    {
        label.setBuddy(&field);
        auto* const layout = new QVBoxLayout(&window);
        for (QWidget* each : controls) {
            layout->addWidget(each);
        }
        layout->addWidget(&field);
        field.setFocus();
        window.makeKeyAndOrderFront();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    ~Mnemonics() override
    {
        QTest::keyRelease(&field, Qt::Key_Alt);
        for (QWidget* each : controls) {
            each->setParent(nullptr);
        }
        field.setParent(nullptr);
    }

    Mnemonics(const Mnemonics&) = delete;
    Mnemonics& operator=(const Mnemonics&) = delete;
    Mnemonics(Mnemonics&&) = delete;
    Mnemonics& operator=(Mnemonics&&) = delete;

    std::vector<QImage> pictures()
    {
        std::vector<QImage> taken;
        for (QWidget* each : controls) {
            taken.push_back(each->grab().toImage());
        }
        return taken;
    }

    ui::PanelWindow window;
    QPushButton button{"&Confirm"};
    QLabel label{"New &password"};
    ui::SwitchView toggle;
    QLineEdit field;
    std::vector<QWidget*> controls{&button, &label, &toggle};
};

} // namespace

TEST_F(Mnemonics, AreUnderlinedWhileAltIsHeldAndNotOtherwise)
{
    toggle.setText("Start at &login");
    const std::vector<QImage> usual = pictures();
    QTest::keyPress(&field, Qt::Key_Alt, Qt::AltModifier);
    const std::vector<QImage> held = pictures();
    for (std::size_t index = 0; index < controls.size(); ++index) {
        EXPECT_NE(held[index], usual[index]) << index;
    }
    QTest::keyRelease(&field, Qt::Key_Alt);
    EXPECT_EQ(pictures(), usual);
}

TEST_F(Mnemonics, AreNoLongerUnderlinedWhenTheKeyboardGoesToAnotherWindow)
{
    const std::vector<QImage> usual = pictures();
    QTest::keyPress(&field, Qt::Key_Alt, Qt::AltModifier);
    ui::PanelWindow other;
    other.makeKeyAndOrderFront();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(pictures(), usual);
}

TEST_F(Mnemonics, AreDrawnAnewInAllWindowsAsAltGoesDown)
{
    class Counting : public QWidget
    {
    public:
        int paintings = 0;

    protected:
        void paintEvent(QPaintEvent* /*event*/) override { ++paintings; }
    };

    Counting other;
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    QCoreApplication::processEvents();
    const int before = other.paintings;
    QTest::keyPress(&field, Qt::Key_Alt, Qt::AltModifier);
    QCoreApplication::processEvents();
    EXPECT_GT(other.paintings, before);
}
