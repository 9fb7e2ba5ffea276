#include "linux/qt/QtIconLoader.h"
#include "qt/QtEnvironment.h"
#include "toolkit/QtIcon.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QGuiApplication>);

constexpr QRgb RED = 0xffff0000;
constexpr QRgb GREEN = 0xff00ff00;

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

    QString savePng(const QString& name, QRgb color)
    {
        QImage image(48, 48, QImage::Format_ARGB32);
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
    const qt::QtIconLoader loader;
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
