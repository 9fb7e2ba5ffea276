#include "SelectionWindowTest.h"
#include "qt/Contrast.h"
#include "ui/views/Theme.h"

#include <QCheckBox>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr double LEAST_CONTRAST = 4.5;

class SelectionForm : public SelectionWindowTest
{
protected:
    QColor colorAt(const char* name, const QPoint& place)
    {
        const auto& widget = control<QWidget>(name);
        const QImage picture = controller.window().grab().toImage();
        const QPoint inWindow = widget.mapTo(&controller.window(), place);
        return picture.pixelColor(inWindow * picture.devicePixelRatio());
    }
};

using support::contrast;

} // namespace

TEST_F(SelectionForm, TheMarksAtItsEndAreOneColumnWithOrWithoutAScrollBar)
{
    const auto endOf = [this](const QWidget& widget) {
        return widget.mapTo(&controller.window(), QPoint(widget.width(), 0)).x();
    };
    const auto endOfPlus = [&] { return endOf(*ui::viewWithTag(cell(0), ui::MyCell::BUTTON_TAG)); };
    show({"Alpha", "Beta"});
    ASSERT_FALSE(table().verticalScrollBar()->isVisible());
    const int column = endOfPlus();
    EXPECT_EQ(endOf(control<QWidget>("showRunningApplicationsHelpButton")), column);
    EXPECT_EQ(endOf(control<QWidget>("administrativeHelpButton")), column);
    EXPECT_EQ(
        endOf(control<QWidget>("filterFieldBackgroundViewOutlet")),
        column - ui::ImageButtonView::PADDING
    );

    show(Names(100, "Alpha"));
    ASSERT_TRUE(table().verticalScrollBar()->isVisible());
    EXPECT_EQ(endOfPlus(), column);
    const QWidget& bar = *table().verticalScrollBar();
    EXPECT_GE(bar.mapTo(&controller.window(), QPoint(0, 0)).x(), column);
}

TEST_F(SelectionForm, TheFooterIsAStripOfItsOwnColour)
{
    show({});
    EXPECT_EQ(colorAt("tableFooterViewOutlet", QPoint(2, 2)), QColor(99, 102, 108));
    EXPECT_GE(contrast(ui::Theme::TEXT, QColor(99, 102, 108)), LEAST_CONTRAST);
}

TEST_F(SelectionForm, TextInTheFilterIsLegibleOnItsGround)
{
    show({});
    const auto& ground = control<QWidget>("filterFieldBackgroundViewOutlet");
    const QColor color = colorAt("filterFieldBackgroundViewOutlet", QPoint(ground.width() / 2, 3));

    const QColor wanted(
        qRound(ui::Theme::GROUND_LOW.red() * 0.8 + 255 * 0.2),
        qRound(ui::Theme::GROUND_LOW.green() * 0.8 + 255 * 0.2),
        qRound(ui::Theme::GROUND_LOW.blue() * 0.8 + 255 * 0.2)
    );
    EXPECT_NEAR(color.red(), wanted.red(), 2);
    EXPECT_NEAR(color.green(), wanted.green(), 2);
    EXPECT_NEAR(color.blue(), wanted.blue(), 2);
    EXPECT_GE(contrast(ui::Theme::TEXT, color), LEAST_CONTRAST);
    EXPECT_GE(contrast(ui::Theme::QUIET, color), LEAST_CONTRAST); // the placeholder
}

TEST_F(SelectionForm, ThePlaceholderIsDrawnAsLegibly)
{
    show({});
    controller.lockAdministrativeApplicationsCheckboxOutlet->setFocus(); // no caret in the field
    const QImage window = controller.window().grab().toImage();
    const QColor ground =
        colorAt("filterFieldBackgroundViewOutlet", QPoint(field().geometry().center().x(), 3));
    double best = 0.0;
    for (int x = 0; x < field().width(); ++x) {
        for (int y = 0; y < field().height(); ++y) {
            const QPoint place = field().mapTo(&controller.window(), QPoint(x, y));
            best = std::max(best, contrast(window.pixelColor(place), ground));
        }
    }
    EXPECT_GE(best, LEAST_CONTRAST);
}

TEST_F(SelectionForm, IsMirroredForThoseWhoReadFromTheRight)
{
    controller.window().setLayoutDirection(Qt::RightToLeft);
    show({"Alpha"});
    EXPECT_GT(control<QWidget>("magnifierView").x(), field().x());
    EXPECT_GT(
        control<QCheckBox>("showRunningApplicationsOnlyCheckboxOutlet").x(),
        control<QWidget>("showRunningApplicationsHelpButton").x()
    );
}
