#include "Platform/Toolkit/RemoteNotification.h"

#include <gmock/gmock.h>

#include <string>

namespace trellisport::platform {
namespace {

constexpr const char *fallback = "TrellisportManager";

RemoteNotification parsed(const QByteArray &content)
{
    return parseRemoteNotification(content, QLatin1String(fallback));
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

TEST(RemoteNotification, WhatIsNoJsonObjectIsShownAsATextOrSaidToBeNone)
{
    EXPECT_EQ(parsed("hello\x07").body, QStringLiteral("hello"));
    EXPECT_EQ(parsed("\"text\"").body, QStringLiteral("\"text\""));
    const QString sentence = parsed("").body;
    EXPECT_FALSE(sentence.isEmpty());
    const QByteArray tooDeep =
        "{\"project_id\":\"p1\",\"a\":" + QByteArray(1500, '[') + "7" + QByteArray(1500, ']') + "}";
    for (const QByteArray &content :
         {QByteArray("[]"), QByteArray("{"), QByteArray("{}}"), QByteArray(" {\"a\""),
          QByteArray("\x01\x02"), QByteArray("\xff\xfe text"),
          QByteArray("{\"type\":\"decision_needed\xff\"}"), tooDeep}) {
        const auto notification = parsed(content);
        EXPECT_EQ(notification.title, QLatin1String(fallback)) << content.toStdString();
        EXPECT_EQ(notification.body, sentence) << content.toStdString();
        EXPECT_FALSE(notification.isUrgent);
        EXPECT_TRUE(notification.notification.userInfo.empty());
    }
}

TEST(RemoteNotification, LongTextsAreCutBetweenCharacters)
{
    const QByteArray smile = "\xF0\x9F\x98\x80";
    const auto notification = parsed("{\"aps\":{\"alert\":{\"title\":\"" + smile.repeated(400) +
                                     "\",\"body\":\"x" + smile.repeated(800) + "\"}}}");
    EXPECT_LE(notification.title.size(), longestTitle);
    EXPECT_LE(notification.body.size(), longestBody);
    EXPECT_TRUE(notification.title.endsWith(QChar(0x2026)));
    EXPECT_TRUE(notification.title.isValidUtf16());
    EXPECT_TRUE(notification.body.isValidUtf16());
    EXPECT_EQ(parsed(QByteArray(4096, 'x')).body.size(), longestBody);
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
    const QByteArray deep =
        "{\"project_id\":\"p1\",\"a\":" + QByteArray(900, '[') + QByteArray(900, ']') + "}";
    EXPECT_EQ(*parsed(deep).notification.userInfo.at("project_id").text(), "p1");
}

} // namespace
} // namespace trellisport::platform
