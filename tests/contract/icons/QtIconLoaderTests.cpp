#include "fakes/FakeDispatchQueues.h"
#include "linux/qt/QtIconLoader.h"
#include "qt/QtEnvironment.h"
#include "qt/WaitFor.h"
#include "toolkit/QtIcon.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QWidget>

#include <optional>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QApplication>);

constexpr QRgb RED = 0xffff0000;
constexpr QRgb GREEN = 0xff00ff00;

/// Of the icon's middle, as it is painted now, without waiting for anything.
QRgb paintedColorOf(const QIcon& icon)
{
    QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    return image.pixel(24, 24);
}

class Picture : public QWidget
{
public:
    explicit Picture(const QIcon& icon) : icon(icon) {}

    std::optional<QRgb> seen;

protected:
    void paintEvent(QPaintEvent* /*event*/) override { seen = paintedColorOf(icon); }

private:
    QIcon icon;
};

/// An icon theme of two icons, one of them the general one.
class QtIconLoader : public testing::Test
{
protected:
    QtIconLoader()
    {
        QDir(folder.path()).mkpath("hicolor/48x48/apps");
        QFile index(folder.filePath("hicolor/index.theme"));
        index.open(QIODevice::WriteOnly);
        index.write("[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps\n\n"
                    "[48x48/apps]\nSize=48\nType=Fixed\n");
        index.close();
        savePng("hicolor/48x48/apps/calculator.png", RED);
        savePng("hicolor/48x48/apps/application-x-executable.png", GREEN);
        QIcon::setThemeSearchPaths({folder.path()});
        QIcon::setThemeName("hicolor");
    }

    QString savePng(const QString& name, QRgb color, int side = 48)
    {
        QImage image(side, side, QImage::Format_ARGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(folder.filePath(name), "PNG"));
        return folder.filePath(name);
    }

    static QRgb colorOf(const platform::IconHandle& handle)
    {
        const QImage image = toolkit::QtIcon::of(handle).pixmap(QSize(48, 48)).toImage();
        return image.isNull() ? 0U : image.pixel(24, 24);
    }

    QTemporaryDir folder;
    fakes::FakeDispatchQueues queues;
    const qt::QtIconLoader loader{queues};
};

} // namespace

TEST_F(QtIconLoader, FindsANameOfTheTheme)
{
    EXPECT_EQ(colorOf(loader.load("calculator")), RED);
}

TEST_F(QtIconLoader, FindsANameThatCarriesTheSuffixOfAFile)
{
    EXPECT_EQ(colorOf(loader.load("calculator.png")), RED);
    EXPECT_EQ(colorOf(loader.load("calculator.svg")), RED);
}

TEST_F(QtIconLoader, ReadsAnAbsolutePath)
{
    EXPECT_EQ(colorOf(loader.load(savePng("any.png", 0xff0000ff).toStdString())), 0xff0000ffU);
}

TEST_F(QtIconLoader, WhatGivesNoIconReadsAsTheGeneralOne)
{
    const QString notAnImage = folder.filePath("text.png");
    QFile file(notAnImage);
    file.open(QIODevice::WriteOnly);
    file.write("no image");
    file.close();
    const QString pipe = folder.filePath("pipe.png");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);

    for (const std::string& name :
         {std::string(),
          std::string("no-such-icon"),
          std::string("/no/such/file.png"),
          std::string("../48x48/apps/calculator"),
          std::string("\xff\xfe"),
          notAnImage.toStdString(),
          pipe.toStdString()}) {
        EXPECT_EQ(colorOf(loader.load(name)), GREEN) << name;
    }
}

TEST_F(QtIconLoader, PaintingALargePictureDoesNotWaitForIt)
{
    const std::string file = savePng("large.png", RED, 1024).toStdString();
    const QIcon icon = toolkit::QtIcon::of(loader.load(file));
    EXPECT_TRUE(queues.global.empty()); // not before it is seen
    EXPECT_EQ(paintedColorOf(icon), GREEN);
    EXPECT_EQ(paintedColorOf(icon), GREEN);
    EXPECT_EQ(queues.global.size(), 1U);
    queues.runAll();
    EXPECT_EQ(paintedColorOf(icon), RED);
    EXPECT_TRUE(queues.global.empty());
}

TEST_F(QtIconLoader, WindowsThatShowALargePictureArePaintedAgainWhenItIsThere)
{
    const std::string file = savePng("large.png", RED, 1024).toStdString();
    const QIcon icon = toolkit::QtIcon::of(loader.load(file));
    Picture picture(icon);
    picture.show();
    ASSERT_TRUE(support::waitFor([&] { return picture.seen == GREEN; }));
    queues.runAll();
    EXPECT_TRUE(support::waitFor([&] { return picture.seen == RED; }));
}

TEST_F(QtIconLoader, WhoeverAsksForThePixelsOfALargePictureGetsThem)
{
    const std::string file = savePng("large.png", RED, 1024).toStdString();
    EXPECT_EQ(colorOf(loader.load(file)), RED);
    EXPECT_TRUE(queues.global.empty());
}

TEST_F(QtIconLoader, ALargePictureMayEndBeforeItIsDecoded)
{
    const std::string file = savePng("large.png", RED, 1024).toStdString();
    EXPECT_EQ(paintedColorOf(toolkit::QtIcon::of(loader.load(file))), GREEN);
    ASSERT_EQ(queues.global.size(), 1U);
    queues.runGlobalTurn();
    ASSERT_EQ(queues.main.size(), 1U);
    queues.runMainTurn();
    EXPECT_TRUE(queues.main.empty());
}

TEST_F(QtIconLoader, ALargePictureThatCannotBeDecodedIsTheGeneralIcon)
{
    const QString path = savePng("broken.png", RED, 1024);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(60)); // its head says how large it is
    file.close();
    const QIcon icon = toolkit::QtIcon::of(loader.load(path.toStdString()));
    EXPECT_EQ(paintedColorOf(icon), GREEN);
    queues.runAll();
    EXPECT_EQ(paintedColorOf(icon), GREEN);
    EXPECT_EQ(colorOf(loader.load(path.toStdString())), GREEN);
}

TEST_F(QtIconLoader, APictureLargerThanAnIconIsTheGeneralIconAndNotDecoded)
{
    const std::string file = savePng("huge.png", RED, 1025).toStdString();
    EXPECT_EQ(colorOf(loader.load(file)), GREEN);
    EXPECT_EQ(paintedColorOf(toolkit::QtIcon::of(loader.load(file))), GREEN);
    EXPECT_TRUE(queues.global.empty());
    savePng("hicolor/48x48/apps/huge.png", RED, 2000);
    EXPECT_EQ(colorOf(loader.load("huge")), GREEN);
}

TEST_F(QtIconLoader, AHandleMadeOnAnotherThreadIsDrawnOnTheMainThread)
{
    platform::IconHandle handle;
    std::thread([&] { handle = loader.load("calculator"); }).join();

    EXPECT_EQ(colorOf(handle), RED);
}

TEST(QtIcon, IsLookedUpOnceAndOnlyWhenItIsDrawn)
{
    int lookUps = 0;
    const auto icon = std::make_shared<toolkit::QtIcon>([&lookUps] {
        ++lookUps;
        return QIcon();
    });
    EXPECT_EQ(lookUps, 0);
    toolkit::QtIcon::of(icon);
    toolkit::QtIcon::of(icon);

    EXPECT_EQ(lookUps, 1);
}

TEST(QtIcon, AnEmptyHandleIsANullIcon)
{
    EXPECT_TRUE(toolkit::QtIcon::of(nullptr).isNull());
}
