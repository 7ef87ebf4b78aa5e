#include "Platform/Linux/Notifications/RemoteNotification.h"

#include <gmock/gmock.h>

#include <string>

namespace trellisport::platform {
namespace {

constexpr const char *fallback = "TrellisportManager";

RemoteNotification parsed(const QByteArray &content)
{
    const auto notification = parseRemoteNotification(content, QLatin1String(fallback));
    if (!notification) {
        ADD_FAILURE() << "not a notification: " << content.toStdString();
        return {};
    }
    return *notification;
}

TEST(RemoteNotification, AlertWithTitleAndBodyIsShown)
{
    const auto notification =
        parsed(R"({"aps":{"alert":{"title":"A question","body":"Use the old API?"}}})");
    EXPECT_EQ(notification.title, QStringLiteral("A question"));
    EXPECT_EQ(notification.body, QStringLiteral("Use the old API?"));
}

TEST(RemoteNotification, AlertThatIsATextIsTheBodyUnderTheProgramsName)
{
    const auto notification = parsed(R"({"aps":{"alert":"Use the old API?"}})");
    EXPECT_EQ(notification.title, QLatin1String(fallback));
    EXPECT_EQ(notification.body, QStringLiteral("Use the old API?"));
}

TEST(RemoteNotification, MissingAndOddPartsAreStoodInFor)
{
    for (const char *content :
         {"{}", R"({"aps":7})", R"({"aps":{}})", R"({"aps":{"alert":null}})",
          R"({"aps":{"alert":{"title":5,"body":[]}}})", R"({"aps":{"alert":{"title":" "}}})"}) {
        const auto notification = parsed(content);
        EXPECT_EQ(notification.title, QLatin1String(fallback)) << content;
        EXPECT_EQ(notification.body, QString()) << content;
    }
}

TEST(RemoteNotification, OnlyAJsonObjectIsOne)
{
    for (const char *content :
         {"", "[]", "7", "\"text\"", "null", "hello", "{", "{}}", "\x01\x02"}) {
        EXPECT_FALSE(parseRemoteNotification(content, QLatin1String(fallback))) << content;
    }
}

TEST(RemoteNotification, ADecisionIsUrgentAndNothingElseIs)
{
    EXPECT_TRUE(parsed(R"({"type":"decision_needed"})").isUrgent);
    EXPECT_FALSE(parsed(R"({"type":"Decision_needed"})").isUrgent);
    EXPECT_FALSE(parsed(R"({"type":"project_awarded"})").isUrgent);
    EXPECT_FALSE(parsed(R"({"type":["decision_needed"]})").isUrgent);
    EXPECT_FALSE(parsed("{}").isUrgent);
}

TEST(RemoteNotification, TheIdIsTheSenders)
{
    EXPECT_EQ(parsed(R"({"id":"n-1"})").id, QByteArray("n-1"));
    EXPECT_EQ(parsed(R"({"id":1})").id, QByteArray());
    EXPECT_EQ(parsed("{}").id, QByteArray());
}

TEST(RemoteNotification, UserInformationKeepsEveryKindOfValue)
{
    const UserInfo info =
        parsed(R"({"type":"dev_error","n":1.5,"b":true,"z":null,"l":["a"],"o":{"k":"v"}})")
            .notification.userInfo;
    ASSERT_EQ(info.size(), 6U);
    ASSERT_NE(info.at("type").text(), nullptr);
    EXPECT_EQ(*info.at("type").text(), "dev_error");
    EXPECT_EQ(std::get<double>(info.at("n").value), 1.5);
    EXPECT_TRUE(std::get<bool>(info.at("b").value));
    EXPECT_TRUE(std::holds_alternative<std::nullptr_t>(info.at("z").value));
    EXPECT_EQ(*std::get<UserInfoValue::List>(info.at("l").value).at(0).text(), "a");
    const auto &member = std::get<UserInfoValue::Object>(info.at("o").value).at(0);
    EXPECT_EQ(member.key, "k");
    EXPECT_EQ(*member.value.text(), "v");
}

TEST(RemoteNotification, ControlCharactersNeverReachTheScreen)
{
    const auto notification =
        parsed(R"({"aps":{"alert":{"title":"a\u0000b\nc","body":"a\u0007b\nc"}}})");
    EXPECT_EQ(notification.title, QStringLiteral("a b c"));
    EXPECT_EQ(notification.body, QStringLiteral("a b\nc"));
}

TEST(RemoteNotification, DeepNestingIsNoTrouble)
{
    const QByteArray deep = "{\"a\":" + QByteArray(2000, '[') + QByteArray(2000, ']') + "}";
    EXPECT_NO_THROW(static_cast<void>(parseRemoteNotification(deep, QLatin1String(fallback))));
}

} // namespace
} // namespace trellisport::platform
