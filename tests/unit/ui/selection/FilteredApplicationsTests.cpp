// What a filter leaves, without a window.
#include "ui/windows/selection/FilteredApplications.h"

#include <gtest/gtest.h>

namespace {

ui::ApplicationEntities named(const std::vector<std::string>& names)
{
    ui::ApplicationEntities entities;
    for (const std::string& name : names) {
        entities.push_back(
            std::make_shared<applications::ApplicationEntity>(name, "org.example." + name, nullptr)
        );
    }
    return entities;
}

std::vector<std::string> left(const std::vector<std::string>& names, const std::string& text)
{
    std::vector<std::string> found;
    for (const auto& entity : ui::filteredApplications(named(names), text)) {
        found.push_back(entity->name);
    }
    return found;
}

using Names = std::vector<std::string>;

} // namespace

TEST(FilteredApplications, NoTextLeavesAll)
{
    EXPECT_EQ(left({"Mail", "Calendar"}, ""), (Names{"Mail", "Calendar"}));
}

TEST(FilteredApplications, APartOfTheNameInAnyCaseIsEnough)
{
    EXPECT_EQ(left({"Mail", "Calendar", "Terminal"}, "AL"), (Names{"Calendar", "Terminal"}));
    EXPECT_EQ(left({"ÉDITEUR", "Mail"}, "édit"), Names{"ÉDITEUR"});
}

TEST(FilteredApplications, TheIdentifierIsNotSearched)
{
    EXPECT_EQ(left({"Mail"}, "example"), Names());
}

TEST(FilteredApplications, SpacesCount)
{
    EXPECT_EQ(left({"Text Editor", "Mail"}, " "), Names{"Text Editor"});
    EXPECT_EQ(left({"Text Editor", "Mail"}, "  "), Names());
}

TEST(FilteredApplications, TheNearestOfSeveralRowsIsTaken)
{
    const ui::ApplicationEntities rows = named({"Mail", "Clock", "Mail", "Calendar", "Mail"});
    EXPECT_EQ(ui::rowOf(rows, "org.example.Mail", 3), 2);
    EXPECT_EQ(ui::rowOf(rows, "org.example.Mail", 4), 4);
    EXPECT_EQ(ui::rowOf(rows, "org.example.Mail", 0), 0);
    EXPECT_EQ(ui::rowOf(rows, "org.example.Gone", 0), std::nullopt);
}
