// The pictures that the program is shipped with.
#include "platform/Fatal.h"
#include "ui/views/ImageView.h"
#include "ui/views/Images.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> NAMES{
    "AddApplication",
    "AlertCritical",
    "AlertInformational",
    "AlertWarning",
    "AppMenuBarIconBlack",
    "AppMenuBarIconWhite",
    "ApplicationIcon",
    "CheckMark",
    "ChooseApplication",
    "ClearText",
    "HelpMark",
    "HelpMenuOption",
    "HelpMenuOption_White",
    "LockAnotherAppMenuOption",
    "LockAnotherAppMenuOption_White",
    "NSStatusAvailable",
    "NSStatusPartiallyAvailable",
    "OptionsMenu",
    "PasswordMenuOption",
    "PasswordMenuOption_White",
    "QuitApplicationMenuOption",
    "QuitApplicationMenuOption_White",
    "RemoveApplication",
    "SearchMark",
};

/// The picture on nothing, `side` points wide on a screen of that scale.
QImage drawn(const std::string& name, int side, double scale)
{
    QImage image(QSize(side, side) * scale, QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    ui::requiredImage(QString::fromStdString(name)).paint(&painter, 0, 0, side, side);
    return image;
}

int paintedPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
        }
    }
    return count;
}

/// True when nothing is painted at the outermost pixels, where it would be cut.
bool hasAMargin(const QImage& image)
{
    const int last = image.width() - 1;
    for (int place = 0; place <= last; ++place) {
        for (const QPoint edge :
             {QPoint(place, 0), QPoint(place, last), QPoint(0, place), QPoint(last, place)}) {
            if (qAlpha(image.pixel(edge)) > 0) {
                return false;
            }
        }
    }
    return true;
}

class Pictures : public testing::TestWithParam<std::string>
{
};

} // namespace

TEST_P(Pictures, AreDrawnAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const QImage image = drawn(GetParam(), 16, scale);
        const int all = image.width() * image.height();
        EXPECT_GT(paintedPixels(image), all / 50) << scale;
    }
}

TEST_P(Pictures, AreNotCutAtTheirEdges)
{
    EXPECT_TRUE(hasAMargin(drawn(GetParam(), 16, 16.0)));
}

TEST_P(Pictures, AreSharpAtTwiceTheScale)
{
    const QImage blurred = drawn(GetParam(), 16, 1.0).scaled(32, 32);
    QImage sharp = drawn(GetParam(), 16, 2.0);
    sharp.setDevicePixelRatio(1.0);
    EXPECT_NE(sharp, blurred);
}

INSTANTIATE_TEST_SUITE_P(All, Pictures, testing::ValuesIn(NAMES), [](const auto& test) {
    return test.param;
});

TEST(Images, AreAllNamedHere)
{
    std::set<std::string> shipped;
    for (const QString& file : QDir(":/images").entryList()) {
        shipped.insert(QFileInfo(file).completeBaseName().toStdString());
    }
    EXPECT_EQ(shipped, std::set<std::string>(NAMES.begin(), NAMES.end()));
}

TEST(Images, AStatusLightIsToldByItsShapeToo)
{
    const QPoint middle(16, 16);
    EXPECT_EQ(qAlpha(drawn("NSStatusAvailable", 16, 2.0).pixel(middle)), 255);
    EXPECT_EQ(qAlpha(drawn("NSStatusPartiallyAvailable", 16, 2.0).pixel(middle)), 0);
}

TEST(Images, ThePictureForAHighlightedItemIsTheSameInWhite)
{
    for (const std::string name :
         {"HelpMenuOption",
          "LockAnotherAppMenuOption",
          "PasswordMenuOption",
          "QuitApplicationMenuOption"}) {
        const QImage usual = drawn(name, 12, 2.0);
        const QImage white = drawn(name + "_White", 12, 2.0);
        EXPECT_EQ(
            usual.convertToFormat(QImage::Format_Alpha8),
            white.convertToFormat(QImage::Format_Alpha8)
        ) << name;
        EXPECT_NE(usual, white) << name;
    }
}

TEST(Images, ANameWithoutAPictureGivesNone)
{
    EXPECT_TRUE(ui::imageNamed("Nothing").isNull());
    EXPECT_FALSE(ui::imageNamed("CheckMark").isNull());
    EXPECT_EQ(ui::imagePath("CheckMark"), ":/images/CheckMark.svg");
}

TEST(ImagesDeathTest, ARequiredPictureThatIsMissingEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(ui::requiredImage("Nothing"), "there is no image Nothing");
}

TEST(ImageView, ShowsThePictureOfAName)
{
    ui::ImageView view;
    view.resize(16, 16);
    const QImage before = view.grab().toImage();
    view.setImageName("NSStatusAvailable");
    EXPECT_EQ(view.imageName(), "NSStatusAvailable");
    EXPECT_NE(view.grab().toImage(), before);
}

TEST(ImageView, APictureOfAnotherMakeHasNoName)
{
    ui::ImageView view;
    view.setImageName("NSStatusAvailable");
    view.setImage(ui::requiredImage("CheckMark"));
    EXPECT_EQ(view.imageName(), "");
    view.setImage(QIcon());
    EXPECT_TRUE(view.image().isNull());
}
