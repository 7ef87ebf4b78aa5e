#include "ProjectDetail/Bids/BidsViewModel.h"
#include "ServiceFixture.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <memory>

namespace trellisport::test {
namespace {

using Content = ListScreenModel::Content;
using OwnBid = BidsViewModel::OwnBid;

ProjectRecord projectWith(OptionalNumber bidAmount)
{
    return {std::make_shared<const ProjectDetail>(
        ProjectDetail{.id = "p7", .title = "t", .bidAmount = bidAmount})};
}

class BidsViewModelTest : public ServiceFixture {
protected:
    void load(const char *bids)
    {
        session->queueReply(200, bids);
        model.appear();
        ASSERT_TRUE(waitUntil([&] { return model.content() == Content::Rows; }));
    }

    BidsViewModel model{api, rules(), projectWith(250)};
};

TEST_F(BidsViewModelTest, LoadsTheBidsOfItsProject)
{
    EXPECT_EQ(model.content(), Content::Spinner);
    load("[]");
    EXPECT_EQ(session->requests().at(0).url, "https://service.example/api/v1/projects/p7/bids");
}

TEST_F(BidsViewModelTest, OfTwoBidsMarkedAsOursTheFirstIsOursAndTheOtherNowhere)
{
    load(R"([{"username":"a","amount":1},{"is_ours":true,"amount":100,"period":7},)"
         R"({"is_ours":true,"amount":200},{"is_ours":false,"amount":3}])");
    EXPECT_EQ(model.ownBid(), OwnBid::Highlighted);
    EXPECT_EQ(model.ownAmount(), u"$100.00");
    EXPECT_EQ(model.ownPeriod(), u"7 days");
    EXPECT_EQ(model.otherCount(), 2);
    EXPECT_EQ(model.rows()->rowCount(), 2);
}

TEST_F(BidsViewModelTest, WithoutABidOfOursTheProjectsAmountStandsIn)
{
    load(R"([{"username":"a","amount":1}])");
    EXPECT_EQ(model.ownBid(), OwnBid::FromProject);
    EXPECT_EQ(model.ownAmount(), u"$250.00");
    EXPECT_EQ(model.otherCount(), 1);
}

TEST_F(BidsViewModelTest, WithoutAnyAmountThereIsNoOwnBid)
{
    model.setProject(projectWith({}));
    load("[]");
    EXPECT_EQ(model.ownBid(), OwnBid::None);
}

TEST_F(BidsViewModelTest, AnOwnBidWithoutNumbersShowsNought)
{
    load(R"([{"is_ours":true}])");
    EXPECT_EQ(model.ownBid(), OwnBid::Highlighted);
    EXPECT_EQ(model.ownAmount(), u"$0.00");
    EXPECT_EQ(model.ownPeriod(), u"0 days");
}

TEST_F(BidsViewModelTest, AFailedLoadShowsTheProjectsAmountAlone)
{
    session->queueReply(500);
    model.appear();
    ASSERT_TRUE(waitUntil([&] { return model.content() == Content::Rows; }));
    EXPECT_EQ(model.ownBid(), OwnBid::FromProject);
    EXPECT_EQ(model.otherCount(), 0);
}

TEST_F(BidsViewModelTest, AProjectThatIsLoadedAnewCountsFromThenOn)
{
    load("[]");
    model.setProject(projectWith(300));
    EXPECT_EQ(model.ownAmount(), u"$300.00");
}

} // namespace
} // namespace trellisport::test
