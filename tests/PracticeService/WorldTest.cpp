#include "PracticeService/World.h"
#include "PracticeDesk.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>

namespace trellisport::practice {
namespace {

constexpr Moment now = std::chrono::sys_days(std::chrono::year(2031) / 3 / 14) +
                       std::chrono::hours(15) + std::chrono::minutes(9);

/// A portfolio made at a fixed moment.
class World {
public:
    World(std::uint64_t seed, int scale, Moment moment = now)
        : store(m_folder.filePath(QStringLiteral("state")).toStdString())
        , m_material(Material::load())
        , m_ledger(store.database(), Random(0))
        , m_workflow(m_ledger, m_material, Random(0))
    {
        populate(store, m_ledger, m_workflow, m_material, seed, scale, moment);
    }

    /// Everything that the console could see.
    std::string text()
    {
        std::string text = encode(store.dashboard()) + encode(store.config());
        for (const Project &project : store.projects(std::nullopt)) {
            const std::string id(project.id.view());
            text += encode(store.project(id).value()) + encode(store.messages(id).value()) +
                    encode(store.decisions(id).value()) + encode(store.bids(id).value()) +
                    encode(store.timeline(id).value()) + encode(store.logs(id).value()) +
                    encode(store.reports(id).value());
        }
        return text;
    }

private:
    QTemporaryDir m_folder;

public:
    Store store;

private:
    Material m_material;
    Ledger m_ledger;
    Workflow m_workflow;
};

TEST(World, SameSeedAndMomentGiveTheSameWorld)
{
    EXPECT_EQ(World(7, 2).text(), World(7, 2).text());
}

TEST(World, AnotherSeedGivesAnotherWorld)
{
    EXPECT_NE(World(7, 1).text(), World(8, 1).text());
}

TEST(World, ScaleMultipliesTheProjects)
{
    const auto once = World(1, 1).store.projects(std::nullopt).size();
    EXPECT_EQ(World(1, 4).store.projects(std::nullopt).size(), 4 * once);
}

TEST(World, RepeatedStoriesAreToldApart)
{
    World world(1, 3);
    std::vector<std::string> ids;
    for (const Project &project : world.store.projects(std::nullopt))
        ids.emplace_back(project.id.view());
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(std::adjacent_find(ids.begin(), ids.end()), ids.end());
}

TEST(World, NothingLiesInTheFuture)
{
    for (const std::uint64_t seed : {1U, 2U, 3U}) {
        World world(seed, 1);
        for (const Project &project : world.store.projects(std::nullopt)) {
            const std::string id(project.id.view());
            EXPECT_LE(project.updatedAt.value(), isoText(now));
            const auto logs = world.store.logs(id).value();
            for (const DevLog &log : logs)
                EXPECT_LE(log.createdAt.value(), isoText(now));
            const auto events = world.store.timeline(id).value();
            for (const TimelineEvent &event : events)
                EXPECT_LE(event.time.value(), isoText(now));
        }
    }
}

TEST(World, EveryProjectGoesForwardInTime)
{
    for (const std::uint64_t seed : {1U, 2U, 3U, 4U, 5U}) {
        World world(seed, 1);
        for (const Project &project : world.store.projects(std::nullopt)) {
            const std::string id(project.id.view());
            const auto events = world.store.timeline(id).value();
            EXPECT_TRUE(std::is_sorted(events.begin(), events.end(),
                                       [](const auto &one, const auto &other) {
                                           return one.time.value() < other.time.value();
                                       }))
                << project.title.view();
            const auto logs = world.store.logs(id).value();
            EXPECT_TRUE(std::is_sorted(logs.begin(), logs.end(),
                                       [](const auto &one, const auto &other) {
                                           return one.createdAt.value() > other.createdAt.value();
                                       }))
                << project.title.view();
        }
    }
}

TEST(World, PendingDecisionsCanStillBeAnswered)
{
    World world(1, 1);
    int pending = 0;
    for (const Project &project : world.store.projects(std::nullopt)) {
        const auto decisions = world.store.decisions(std::string(project.id.view())).value();
        for (const Decision &decision : decisions) {
            if (decision.status != "pending")
                continue;
            ++pending;
            if (decision.timeoutMinutes) {
                EXPECT_GT(momentOf(decision.notifiedAt.value()).value() +
                              std::chrono::minutes(*decision.timeoutMinutes),
                          now);
            }
        }
    }
    EXPECT_GE(pending, 3);
}

TEST(World, DocumentsMatchTheStage)
{
    World world(1, 1);
    static constexpr std::array order{"discovered", "questions_sent", "answers_received",
                                      "plan_sent", "bid_placed"};
    for (const Project &listed : world.store.projects(std::nullopt)) {
        const auto project = world.store.project(std::string(listed.id.view())).value();
        const auto place = std::find_if(order.begin(), order.end(), [&](const char *stage) {
            return project.bidStatus == stage;
        });
        // Awarded, rejected and completed projects come after all of them.
        const bool looked = project.bidStatus.has_value();
        const auto reached = looked ? place - order.begin() : -1;
        EXPECT_EQ(project.projectMd.has_value(), looked) << project.title.view();
        EXPECT_EQ(project.questionnaire.has_value(), reached >= 1) << project.title.view();
        EXPECT_EQ(project.ownerAnswers.has_value(), reached >= 2) << project.title.view();
        EXPECT_EQ(project.deliveryPlan.has_value(), reached >= 3) << project.title.view();
        EXPECT_EQ(project.bidAmount.has_value(), reached >= 4) << project.title.view();
    }
}

TEST(World, AFailedFillingLeavesTheStoreEmpty)
{
    QTemporaryDir folder;
    const std::string file = folder.filePath(QStringLiteral("state")).toStdString();
    {
        const Material material = Material::load();
        Store store(file);
        Ledger ledger(store.database(), Random(0));
        Workflow workflow(ledger, material, Random(0));
        store.database().run("DROP TABLE happenings");
        EXPECT_THROW(populate(store, ledger, workflow, material, 1, 1, now), StoreError);
    }
    EXPECT_FALSE(Store(file).isFilled());
}

} // namespace
} // namespace trellisport::practice
