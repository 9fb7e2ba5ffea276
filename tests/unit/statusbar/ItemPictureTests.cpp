// The picture of an item, pixel by pixel.
#include "desktop/TemporaryFolder.h"
#include "linux/statusbar/ItemPicture.h"
#include "qt/QtEnvironment.h"

#include <QGuiApplication>

#include <map>

#include <gtest/gtest.h>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QGuiApplication>);

/// How many pixels of the middle row belong to the image, and whether each does wholly.
struct Image
{
    int side = 0;
    bool sharp = true;
};

class ItemPicture : public testing::Test
{
protected:
    ItemPicture()
    {
        desktop::writeFile(
            path(),
            R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">)"
            R"(<rect width="16" height="16" fill="#ff0000"/></svg>)"
        );
    }

    [[nodiscard]] std::filesystem::path path() const { return folder.path() / "square.svg"; }

    [[nodiscard]] Image imageIn(QSize size) const
    {
        const QImage picture = statusbar::itemPicture({path().string(), false, "Tarvel"}, size);
        Image image;
        for (int x = 0; x < size.width(); ++x) {
            const int alpha = picture.pixelColor(x, size.height() / 2).alpha();
            image.side += alpha > 0 ? 1 : 0;
            image.sharp = image.sharp && (alpha == 0 || alpha == 255);
        }
        return image;
    }

    desktop::TemporaryFolder folder;
};

} // namespace

TEST_F(ItemPicture, TheImageFollowsTheGridThatItIsDrawnOn)
{
    const std::map<int, int> expected{
        {12, 12}, {16, 16}, {20, 16}, {22, 16}, {24, 16}, {32, 16 + 8}, {44, 32}, {48, 32}};
    for (const auto& [item, wanted] : expected) {
        const Image image = imageIn({item, item});
        EXPECT_EQ(image.side, wanted) << item;
        EXPECT_TRUE(image.sharp) << item;
    }
}

TEST_F(ItemPicture, TheShorterSideCounts)
{
    EXPECT_EQ(imageIn({60, 22}).side, 16);
    EXPECT_EQ(imageIn({22, 60}).side, 16);
}
