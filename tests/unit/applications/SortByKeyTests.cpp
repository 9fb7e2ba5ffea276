#include "applications/SortByKey.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using applications::ApplicationEntity;
using applications::ApplicationEntityPtr;
using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

std::vector<ApplicationEntityPtr> entities(const std::vector<std::string>& names)
{
    std::vector<ApplicationEntityPtr> result;
    int number = 0;
    for (const std::string& name : names) {
        result.push_back(
            std::make_shared<ApplicationEntity>(name, std::to_string(++number), nullptr)
        );
    }
    return result;
}

std::vector<std::string> sortedNames(const std::vector<std::string>& names)
{
    std::vector<std::string> result;
    for (const auto& entity : applications::sortedByKey(entities(names), [](const auto& record) {
             return record.name;
         })) {
        result.push_back(entity->name);
    }
    return result;
}

} // namespace

TEST(SortByKey, AsciiKeysAreOrderedByTheirBytes)
{
    EXPECT_THAT(
        sortedNames({"app9", "alpha", "app10", "Zeta", "app"}),
        ElementsAre("Zeta", "alpha", "app", "app10", "app9")
    );
}

TEST(SortByKey, OtherKeysAreOrderedByCollation)
{
    EXPECT_THAT(
        sortedNames({"zebra", "\u00E4rzte", "apple"}), ElementsAre("apple", "\u00E4rzte", "zebra")
    );
}

TEST(SortByKey, EqualKeysKeepTheirOrder)
{
    const auto sorted =
        applications::sortedByKey(entities({"b", "a", "b", "a"}), [](const auto& record) {
            return record.name;
        });

    std::vector<std::string> identifiers;
    for (const auto& entity : sorted) {
        identifiers.push_back(entity->bundleIdentifier);
    }
    EXPECT_THAT(identifiers, ElementsAre("2", "4", "1", "3"));
}

TEST(SortByKey, NamesWhoseOrderGoesInACircleAreAllKept)
{
    // "Zeta" < "alpha" by bytes, "alpha" < "éclair" < "Zeta" by collation.
    std::vector<std::string> names;
    for (int round = 0; round < 50; ++round) {
        for (const char* name : {"Zeta", "\u00E9clair", "alpha"}) {
            names.emplace_back(name);
        }
    }

    EXPECT_THAT(sortedNames(names), UnorderedElementsAreArray(names));
}
