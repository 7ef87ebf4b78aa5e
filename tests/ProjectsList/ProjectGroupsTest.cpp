#include "ProjectsList/ProjectGroups.h"
#include "Platform/Platform.h"
#include "ProjectSamples.h"

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::IsEmpty;
using Groups = std::vector<ProjectGroup>;

constexpr std::size_t discovered = 0;
constexpr std::size_t bidPlaced = 4;
constexpr std::size_t awarded = 5;
constexpr std::size_t completed = 7;

/// searched: what is looked for in the titles.
Groups grouped(const std::vector<Project> &projects, std::optional<std::size_t> status = {},
               const char *searched = nullptr)
{
    std::optional<std::vector<std::uint32_t>> found;
    if (searched != nullptr) {
        const auto &rules = platform::Platform::current().textRules();
        found = rules.searchable(titlesOf(projects))->holding(searched);
    }
    return groupProjects(statusPlaces(projects), status, found);
}

TEST(ProjectGroups, StandInTheirFixedOrderWhateverOrderTheServiceUsed)
{
    const std::vector<Project> projects{project("1", "completed"), project("2", "discovered"),
                                        project("3", "awarded"), project("4", "bid_placed")};
    EXPECT_EQ(grouped(projects),
              (Groups{{discovered, {1}}, {bidPlaced, {3}}, {awarded, {2}}, {completed, {0}}}));
}

TEST(ProjectGroups, KeepTheServicesOrderWithinAGroup)
{
    const std::vector<Project> projects{project("9", "awarded"), project("1", "discovered"),
                                        project("5", "awarded"), project("7", "awarded")};
    EXPECT_EQ(grouped(projects), (Groups{{discovered, {1}}, {awarded, {0, 2, 3}}}));
}

TEST(ProjectGroups, AProjectWithoutAStatusOrWithAnyOtherWordIsInNone)
{
    const std::vector<Project> projects{project("1", std::nullopt), project("2", "pending"),
                                        project("3", "unknown"),    project("4", ""),
                                        project("5", "Awarded"),    project("6", "bid placed")};
    EXPECT_THAT(grouped(projects), IsEmpty());
}

TEST(ProjectGroups, OfNothingThereAreNone)
{
    EXPECT_THAT(grouped({}), IsEmpty());
}

TEST(ProjectGroups, RepeatedIdentitiesKeepEveryProject)
{
    const std::vector<Project> projects{project("1", "awarded"), project("1", "awarded")};
    EXPECT_EQ(grouped(projects), (Groups{{awarded, {0, 1}}}));
}

TEST(ProjectGroups, AStatusLeavesItsOwnGroupOnly)
{
    const std::vector<Project> projects{project("1", "awarded"), project("2", "discovered")};
    EXPECT_EQ(grouped(projects, awarded, nullptr), (Groups{{awarded, {0}}}));
    EXPECT_THAT(grouped(projects, completed, nullptr), IsEmpty());
    EXPECT_EQ(grouped(projects, std::nullopt, nullptr),
              (Groups{{discovered, {1}}, {awarded, {0}}}));
}

TEST(ProjectGroups, ASearchForApiFindsItInTitlesInAnyLetterCase)
{
    const std::vector<Project> projects{
        project("1", "awarded", "REST API"), project("2", "awarded", "Rapid prototype"),
        project("3", "awarded", "Logo"), project("4", "discovered", "Apis and bees")};
    const auto found = grouped(projects, std::nullopt, "api");
    EXPECT_EQ(found, (Groups{{discovered, {3}}, {awarded, {0, 1}}}));
}

TEST(ProjectGroups, ASearchReadsNothingButTitles)
{
    const std::vector<Project> projects{{.id = "api",
                                         .refNumber = "API-1",
                                         .title = "Logo",
                                         .description = "an api",
                                         .bidStatus = "awarded",
                                         .ownerUsername = "api_shop"}};
    EXPECT_THAT(grouped(projects, std::nullopt, "api"), IsEmpty());
}

TEST(ProjectGroups, AStatusAndASearchBothCount)
{
    const std::vector<Project> projects{project("1", "awarded", "api one"),
                                        project("2", "discovered", "api two"),
                                        project("3", "awarded", "three")};
    EXPECT_EQ(grouped(projects, awarded, "api"), (Groups{{awarded, {0}}}));
}

TEST(ProjectGroups, ASearchFindsLettersComposedOrNotAndTellsAccentsApart)
{
    const std::vector<Project> projects{project("1", "awarded", "Caf\u00e9 site"),
                                        project("2", "awarded", "Cafe\u0301 app"),
                                        project("3", "awarded", "Cafe shop")};
    EXPECT_EQ(grouped(projects, std::nullopt, "CAF\u00c9"), (Groups{{awarded, {0, 1}}}));
    EXPECT_EQ(grouped(projects, std::nullopt, "cafe"), (Groups{{awarded, {2}}}));
}

} // namespace
} // namespace trellisport::test
