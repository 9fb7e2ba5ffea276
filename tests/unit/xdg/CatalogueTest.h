// The catalogue, read from folders that are made for each case.
#pragma once

#include "desktop/TemporaryFolder.h"
#include "linux/xdg/CatalogueBuilder.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace xdg_tests {

using Names = std::vector<std::string>;

class CatalogueTest : public testing::Test
{
protected:
    CatalogueTest()
    {
        environment.dataFolders = {folder.path("home"), folder.path("system")};
        environment.programFolders = {folder.path("local/bin"), folder.path("bin")};
        folder.copyProgram("/bin/true", "bin/foo");
        folder.copyProgram("/bin/true", "bin/bar");
    }

    static std::string entry(const std::string& name, const std::string& more = "Exec=foo %U\n")
    {
        return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more;
    }

    void add(const std::string& file, const std::string& text)
    {
        folder.write("system/applications/" + file, text);
    }

    void addForUser(const std::string& file, const std::string& text)
    {
        folder.write("home/applications/" + file, text);
    }

    void build()
    {
        xdg::Choice nobody;
        catalogue = xdg::CatalogueBuilder(environment, xdg::Roles::shipped()).build(nobody);
    }

    Names ids()
    {
        build();
        Names result;
        for (const xdg::InstalledApplication& application : catalogue->all()) {
            result.push_back(application.entry.id);
        }
        return result;
    }

    Names shownIds()
    {
        build();
        Names result;
        for (const xdg::InstalledApplication& application : catalogue->all()) {
            if (application.shown) {
                result.push_back(application.entry.id);
            }
        }
        return result;
    }

    std::string ofProcess(
        const std::string& executable, Names arguments, const std::string& workingFolder = "/"
    )
    {
        build();
        proc::ProcessFacts facts;
        facts.executable = executable;
        facts.arguments = std::move(arguments);
        facts.workingDirectory = workingFolder;
        const auto* found = catalogue->ofProcess(facts, [this](pid_t) { return claims; });
        return found == nullptr ? "" : found->entry.id;
    }

    desktop::TemporaryFolder folder;
    xdg::XdgEnvironment environment;
    std::shared_ptr<const xdg::Catalogue> catalogue;
    Names claims;
};

} // namespace xdg_tests
