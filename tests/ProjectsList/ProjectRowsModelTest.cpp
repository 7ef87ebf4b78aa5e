#include "ProjectsList/ProjectRowsModel.h"
#include "Platform/Platform.h"
#include "Presentation/Colors.h"
#include "ProjectSamples.h"
#include "ProjectsList/ProjectRowData.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <random>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using List = std::vector<Project>;

class ProjectRowsModelTest : public ::testing::Test {
protected:
    void show(const List &projects)
    {
        auto shared = std::make_shared<const List>(projects);
        auto groups = groupProjects(statusPlaces(*shared));
        model.show(std::move(shared), std::move(groups));
    }
    QVariant value(int row, int role) const { return model.data(model.index(row), role); }
    QStringList ids() const
    {
        QStringList found;
        for (int row = 0; row < model.rowCount(); ++row) {
            found << value(row, ProjectRowsModel::ProjectRole).value<ProjectRowData>().id;
        }
        return found;
    }
    /// "first", "last", "both" or "inner" for each row.
    QStringList places() const
    {
        QStringList found;
        for (int row = 0; row < model.rowCount(); ++row) {
            const bool first = value(row, ProjectRowsModel::FirstRole).toBool();
            const bool last = value(row, ProjectRowsModel::LastRole).toBool();
            found << QString::fromLatin1(first && last ? "both"
                                         : first       ? "first"
                                         : last        ? "last"
                                                       : "inner");
        }
        return found;
    }

    ProjectRowsModel model{platform::Platform::current().textRules()};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

TEST_F(ProjectRowsModelTest, StartsEmpty)
{
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(ProjectRowsModelTest, ShowsTheGroupsOneAfterTheOther)
{
    show({project("1", "awarded"), project("2", "discovered"), project("3", "awarded"),
          project("4", "awarded")});
    EXPECT_THAT(ids(), ElementsAre(u"2", u"1", u"3", u"4"));
    EXPECT_THAT(places(), ElementsAre(u"both", u"first", u"inner", u"last"));
}

TEST_F(ProjectRowsModelTest, TheFirstRowOfAGroupBringsItsHeaderInCapitalsAndItsColour)
{
    show({project("1", "questions_sent"), project("2", "questions_sent"),
          project("3", "bid_placed")});
    EXPECT_EQ(value(0, ProjectRowsModel::HeaderRole), QStringLiteral("QUESTIONS SENT"));
    EXPECT_EQ(value(0, ProjectRowsModel::HeaderColorRole).value<QColor>(), colors::yellow());
    EXPECT_EQ(value(1, ProjectRowsModel::HeaderRole), QString());
    EXPECT_EQ(value(2, ProjectRowsModel::HeaderRole), QStringLiteral("BID PLACED"));
    EXPECT_EQ(value(2, ProjectRowsModel::HeaderColorRole).value<QColor>(), colors::accent());
}

TEST_F(ProjectRowsModelTest, TheSameProjectsAgainMoveNoRow)
{
    const List projects{project("1", "awarded"), project("2", "discovered")};
    show(projects);
    inserted.clear();
    show(projects);
    EXPECT_THAT(inserted, IsEmpty());
    EXPECT_THAT(removed, IsEmpty());
}

TEST_F(ProjectRowsModelTest, AChangedTitleKeepsItsRowAndIsAnnounced)
{
    show({project("1", "awarded", "Old"), project("2", "awarded")});
    inserted.clear();
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    show({project("1", "awarded", "New"), project("2", "awarded")});
    EXPECT_EQ(value(0, ProjectRowsModel::ProjectRole).value<ProjectRowData>().title, u"New");
    EXPECT_EQ(changed.size(), 1);
    EXPECT_THAT(inserted, IsEmpty());
    EXPECT_THAT(removed, IsEmpty());
}

TEST_F(ProjectRowsModelTest, ANewProjectIsOneInsertedRow)
{
    show({project("1", "awarded"), project("3", "awarded")});
    inserted.clear();
    show({project("1", "awarded"), project("2", "awarded"), project("3", "awarded")});
    EXPECT_THAT(ids(), ElementsAre(u"1", u"2", u"3"));
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted[0][1], 1);
    EXPECT_EQ(inserted[0][2], 1);
    EXPECT_THAT(removed, IsEmpty());
}

TEST_F(ProjectRowsModelTest, AProjectThatChangesItsStatusMovesToItsNewGroup)
{
    show({project("1", "bid_placed"), project("2", "bid_placed"), project("3", "awarded")});
    inserted.clear();
    show({project("1", "bid_placed"), project("2", "awarded"), project("3", "awarded")});
    EXPECT_THAT(ids(), ElementsAre(u"1", u"2", u"3"));
    EXPECT_THAT(places(), ElementsAre(u"both", u"first", u"last"));
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(inserted.size(), 1);
}

TEST_F(ProjectRowsModelTest, AnyStateFollowsAnyOther)
{
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same run every time
    for (int round = 0; round < 300; ++round) {
        List projects;
        const auto size = random() % 12;
        for (unsigned place = 0; place < size; ++place) {
            const std::string id = std::to_string(random() % 14);
            const auto status = random() % (projectStatuses.size() + 1);
            projects.push_back(project(
                id.c_str(), status < 3 ? OptionalText(projectStatuses.at(status)) : std::nullopt));
        }
        show(projects);
        QStringList expected;
        for (const ProjectGroup &group : groupProjects(statusPlaces(projects))) {
            for (const auto place : group.projects) {
                const std::string_view id = projects[place].id;
                expected << QString::fromUtf8(id.data(), static_cast<qsizetype>(id.size()));
            }
        }
        ASSERT_EQ(ids(), expected) << "round " << round;
    }
    EXPECT_THAT(reset, IsEmpty());
}

} // namespace
} // namespace trellisport::test
