// One set of promises for files and bundles, kept by the fakes and by the adapters.
#include "desktop/TemporaryFolder.h"
#include "fakes/FakeBundles.h"
#include "fakes/FakeFileManager.h"
#include "linux/xdg/XdgBundles.h"
#include "linux/xdg/XdgFileManager.h"

#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

/// A system with one shown application "org.Foo", named "Foo", that executes a file "foo"; a hidden
/// one "org.Hidden"; and a real folder with the entries ".hidden" and "file".
class System
{
public:
    System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;
    System(System&&) = delete;
    System& operator=(System&&) = delete;
    virtual ~System() = default;

    virtual platform::FileManager& files() = 0;
    virtual platform::Bundles& bundles() = 0;
    virtual std::string realFolder() = 0;
};

class FakeSystem final : public System
{
public:
    FakeSystem()
    {
        fileManager.folders["/Applications"] = {"org.Foo.app"};
        fileManager.folders["/real"] = {".hidden", "file"};
        for (const std::string name : {"Foo", "Hidden"}) {
            const std::string path = "/Applications/org." + name + ".app";
            fakeBundles.bundles[path] = {path, name, "foo", "org." + name};
        }
    }

    platform::FileManager& files() override { return fileManager; }

    platform::Bundles& bundles() override { return fakeBundles; }

    std::string realFolder() override { return "/real"; }

private:
    fakes::FakeFileManager fileManager;
    fakes::FakeBundles fakeBundles;
};

class RealSystem final : public System
{
public:
    RealSystem()
    {
        const std::string program = folder.copyProgram("/bin/true", "bin/foo");
        const std::string entry = "[Desktop Entry]\nType=Application\nExec=" + program + "\nName=";
        folder.write("share/applications/org.Foo.desktop", entry + "Foo\n");
        folder.write("share/applications/org.Hidden.desktop", entry + "Hidden\nNoDisplay=true\n");
        folder.write("real/.hidden", "");
        folder.write("real/file", "");
        xdg::XdgEnvironment environment;
        environment.dataFolders = {folder.path("share")};
        catalogue = std::make_unique<xdg::ApplicationCatalogue>(
            environment, xdg::Roles::shipped(), [](std::string_view) {}
        );
        fileManager = std::make_unique<xdg::XdgFileManager>(*catalogue);
        xdgBundles = std::make_unique<xdg::XdgBundles>(*catalogue, "/opt/Tarvel.app/Tarvel");
    }

    platform::FileManager& files() override { return *fileManager; }

    platform::Bundles& bundles() override { return *xdgBundles; }

    std::string realFolder() override { return folder.path("real"); }

private:
    desktop::TemporaryFolder folder;
    std::unique_ptr<xdg::ApplicationCatalogue> catalogue;
    std::unique_ptr<xdg::XdgFileManager> fileManager;
    std::unique_ptr<xdg::XdgBundles> xdgBundles;
};

template <typename Kind> class FileManagerContract : public testing::Test
{
protected:
    Kind system;
};

using Kinds = testing::Types<FakeSystem, RealSystem>;
TYPED_TEST_SUITE(FileManagerContract, Kinds);

} // namespace

TYPED_TEST(FileManagerContract, ApplicationsFolderHoldsWhatIsMeantToBeShown)
{
    EXPECT_EQ(this->system.files().contentsOfDirectory("/Applications"), Names{"org.Foo.app"});
}

TYPED_TEST(FileManagerContract, OtherFoldersAreTheRealOnes)
{
    auto names = this->system.files().contentsOfDirectory(this->system.realFolder());

    ASSERT_TRUE(names.has_value());
    std::sort(names->begin(), names->end());
    EXPECT_EQ(*names, (Names{".hidden", "file"}));
}

TYPED_TEST(FileManagerContract, WhatIsNoFolderHasNoContents)
{
    const std::string folder = this->system.realFolder();

    EXPECT_FALSE(this->system.files().contentsOfDirectory(folder + "/file").has_value());
    EXPECT_FALSE(this->system.files().contentsOfDirectory(folder + "/missing").has_value());
    EXPECT_FALSE(this->system.files().contentsOfDirectory("/Applications/org.Foo.app").has_value());
    EXPECT_FALSE(this->system.files().contentsOfDirectory("").has_value());
}

TYPED_TEST(FileManagerContract, BundleOfAnEntryTellsNameExecutableAndIdentifier)
{
    const auto bundle = this->system.bundles().open("/Applications/org.Foo.app");

    EXPECT_EQ(bundle, (platform::Bundle{"/Applications/org.Foo.app", "Foo", "foo", "org.Foo"}));
}

TYPED_TEST(FileManagerContract, HiddenEntryHasABundleToo)
{
    const auto bundle = this->system.bundles().open("/Applications/org.Hidden.app");

    ASSERT_TRUE(bundle.has_value());
    EXPECT_EQ(bundle->name, "Hidden");
}

TYPED_TEST(FileManagerContract, BundleThatIsNotThereCannotBeOpened)
{
    EXPECT_FALSE(this->system.bundles().open("/Applications/org.None.app").has_value());
    EXPECT_FALSE(this->system.bundles().open("/Applications").has_value());
    EXPECT_FALSE(this->system.bundles().open(this->system.realFolder()).has_value());
    EXPECT_FALSE(this->system.bundles().open("").has_value());
}

TYPED_TEST(FileManagerContract, MainBundleIsTheAgents)
{
    EXPECT_EQ(
        this->system.bundles().mainBundle(),
        (platform::Bundle{"/opt/Tarvel.app", "Tarvel", "Tarvel", "com.quorvent.Tarvel"})
    );
}

namespace {

class XdgBundlesTest : public testing::Test
{
protected:
    desktop::TemporaryFolder folder;
    xdg::ApplicationCatalogue catalogue{
        xdg::XdgEnvironment(), xdg::Roles::shipped(), [](std::string_view) {}};
    xdg::XdgBundles bundles{catalogue, "/opt/Tarvel.app/Tarvel"};
};

} // namespace

TEST_F(XdgBundlesTest, FolderOfTheOwnLayoutIsABundle)
{
    folder.writeProgram("Tarvel.app/Tarvel", "");
    folder.writeProgram("OlvoHelper.app/OlvoHelper", "");

    EXPECT_EQ(bundles.open(folder.path("Tarvel.app"))->identifier, "com.quorvent.Tarvel");
    EXPECT_EQ(bundles.open(folder.path("OlvoHelper.app"))->identifier, "com.quorvent.OlvoHelper");
}

TEST_F(XdgBundlesTest, OtherFoldersAreNoBundles)
{
    folder.writeProgram("Other.app/Other", "");
    folder.write("empty/Tarvel.app/readme", "");

    EXPECT_FALSE(bundles.open(folder.path("Other.app")).has_value());
    EXPECT_FALSE(bundles.open(folder.path("empty/Tarvel.app")).has_value());
}

TEST_F(XdgBundlesTest, ProcessKnowsItsOwnBundle)
{
    const std::filesystem::path program = std::filesystem::canonical("/proc/self/exe");

    const platform::Bundle main = xdg::XdgBundles(catalogue).mainBundle();

    EXPECT_EQ(main.path, program.parent_path());
    EXPECT_EQ(main.executable, program.filename());
    EXPECT_EQ(main.identifier, "com.quorvent.Tarvel");
}

TEST_F(XdgBundlesTest, ResourcesAreFoundInTheOwnBundleAlone)
{
    folder.write("Tarvel.app/Resources/Help.html", "");
    xdg::XdgBundles own(catalogue, folder.path("Tarvel.app/Tarvel"));

    EXPECT_EQ(own.pathForResource("Help", "html"), folder.path("Tarvel.app/Resources/Help.html"));
    EXPECT_FALSE(own.pathForResource("Help", "pdf").has_value());
    EXPECT_FALSE(bundles.pathForResource("Help", "html").has_value());
}

TEST(XdgFileManager, PathsOfBundlesAreReadBack)
{
    EXPECT_EQ(xdg::idOfBundlePath(xdg::bundlePath("org.Foo")), "org.Foo");
    EXPECT_EQ(xdg::idOfBundlePath("/Applications//org.Foo.app/"), "org.Foo");
    EXPECT_FALSE(xdg::idOfBundlePath("/Applications/.app").has_value());
    EXPECT_FALSE(xdg::idOfBundlePath("/Applications/a/b.app").has_value());
    EXPECT_FALSE(xdg::idOfBundlePath("/Other/b.app").has_value());
}
