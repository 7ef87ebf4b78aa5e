#include "PracticeService/StatusPage.h"
#include "PracticeDesk.h"

#include <gmock/gmock.h>

namespace trellisport::practice {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(StatusPage, ShowsCountsQuestionsAndHappenings)
{
    PracticeDesk desk;
    const auto asked = desk.happen("decision");
    ASSERT_FALSE(asked.decision.empty());
    const ServiceReply reply = desk.get("/");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.contentType, "text/html; charset=utf-8");
    EXPECT_THAT(reply.body, HasSubstr("<b>4</b><span>bid placed</span>"));
    const auto question =
        desk.read<std::vector<Decision>>("/projects/" + asked.project + "/decisions").front();
    EXPECT_THAT(reply.body, HasSubstr(QString::fromUtf8(question.question.data(),
                                                        qsizetype(question.question.size()))
                                          .toHtmlEscaped()
                                          .toStdString()));
}

TEST(StatusPage, EscapesTextsFromTheData)
{
    const std::string evil = "<script>alert('x')</script>\"&{tiles}";
    StatusFacts facts{DashboardData{{{"discovered", 2}}, 1, 2, 3},
                      {{evil, evil, evil, evil}},
                      {{evil, evil, evil}},
                      1,
                      evil};
    const std::string page = statusPageOf(facts);
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, HasSubstr("&lt;script&gt;"));
}

TEST(StatusPage, LoadsNothingFromOutside)
{
    PracticeDesk desk;
    const std::string page = desk.get("/").body;
    for (const char *outside : {"http://", "https://", "src=", "url(", "@import"})
        EXPECT_THAT(page, Not(HasSubstr(outside)));
}

TEST(StatusPage, EmptyListsSaySo)
{
    EXPECT_THAT(statusPageOf({DashboardData{{}, 0, 0, 0}, {}, {}, 0, "now"}),
                HasSubstr("Nothing yet"));
}

} // namespace
} // namespace trellisport::practice
