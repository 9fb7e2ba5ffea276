#include "desktop/TemporaryFolder.h"
#include "linux/xdg/FolderCache.h"

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

namespace {

/// What is parsed is known by its text, and whether the cache still holds it by its life.
class FolderCacheTest : public testing::Test
{
protected:
    using Value = std::shared_ptr<std::string>;

    std::vector<std::string> below()
    {
        std::vector<std::string> texts;
        for (const auto& item : cache.below(folder.path())) {
            texts.push_back(item.id + "=" + *item.value);
        }
        return texts;
    }

    bool isHeld(const std::string& text) const
    {
        return std::any_of(
            parsed.begin(),
            parsed.end(),
            [&](const std::weak_ptr<std::string>& one) {
                const Value held = one.lock();
                return held != nullptr && *held == text;
            }
        );
    }

    desktop::TemporaryFolder folder;
    std::vector<std::weak_ptr<std::string>> parsed;
    xdg::FolderCache<Value> cache{".x", [this](const std::string& text) {
                                      auto value = std::make_shared<std::string>(text);
                                      parsed.push_back(value);
                                      return std::optional(value);
                                  }};
};

using Texts = std::vector<std::string>;

} // namespace

TEST_F(FolderCacheTest, AFileIsParsedAgainOnlyWhenItIsAnotherOne)
{
    folder.write("a.x", "first");
    folder.write("sub/b.x", "second");
    EXPECT_EQ(below(), (Texts{"a=first", "sub-b=second"}));
    cache.forgetAll();
    EXPECT_EQ(below(), (Texts{"a=first", "sub-b=second"}));
    EXPECT_EQ(parsed.size(), 2U);

    folder.write("a.x", "another");
    cache.forget({folder.path()});
    EXPECT_EQ(below(), (Texts{"a=another", "sub-b=second"}));
    EXPECT_EQ(parsed.size(), 3U);
}

TEST_F(FolderCacheTest, ADeletedFileIsNotKept)
{
    folder.write("a.x", "first");
    folder.write("b.x", "second");
    below();

    std::filesystem::remove(folder.path("a.x"));
    cache.forget({folder.path()});

    EXPECT_EQ(below(), Texts{"b=second"});
    EXPECT_FALSE(isHeld("first"));
    EXPECT_TRUE(isHeld("second"));
}

TEST_F(FolderCacheTest, ADeletedFolderIsNotKeptNorWhatWasInIt)
{
    folder.write("a.x", "first");
    folder.write("sub/deep/b.x", "second");
    folder.write("sub-b.x", "third");
    below();

    std::filesystem::remove_all(folder.path("sub"));
    cache.forget({folder.path()});

    EXPECT_EQ(below(), (Texts{"a=first", "sub-b=third"}));
    EXPECT_FALSE(isHeld("second"));
    EXPECT_TRUE(isHeld("third"));
    EXPECT_FALSE(cache.knows(folder.path("sub/deep")));
}

TEST_F(FolderCacheTest, OfARootThatIsGoneNothingIsKept)
{
    folder.write("root/a.x", "first");
    EXPECT_EQ(cache.below(folder.path("root")).size(), 1U);

    std::filesystem::remove_all(folder.path("root"));
    cache.forgetAll();

    EXPECT_TRUE(cache.below(folder.path("root")).empty());
    EXPECT_FALSE(isHeld("first"));
}
