#include "Platform/Linux/IcuTextRules.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <string>

namespace trellisport::platform {
namespace {

/// The cases by which every platform's text rules are held to the same; tests/Web/tools has the
/// same for the browser's.
QJsonArray cases(const char *name)
{
    QFile file(QStringLiteral(TEXT_CASES));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QJsonArray all = QJsonDocument::fromJson(file.readAll())[QLatin1String(name)].toArray();
    EXPECT_FALSE(all.isEmpty()) << name;
    return all;
}

std::string text(const QJsonValue &value)
{
    return value.toString().toStdString();
}

TEST(TextCases, ChangeOfCase)
{
    const IcuTextRules rules("en");
    for (const auto &one : cases("capitalized"))
        EXPECT_EQ(rules.capitalized(text(one[0])), text(one[1]));
    for (const auto &one : cases("uppercased"))
        EXPECT_EQ(rules.uppercased(text(one[0])), text(one[1]));
    for (const auto &one : cases("lowercased"))
        EXPECT_EQ(rules.lowercased(text(one[0])), text(one[1]));
}

TEST(TextCases, Prefix)
{
    const IcuTextRules rules("en");
    for (const auto &one : cases("prefix"))
        EXPECT_EQ(rules.prefix(text(one[0]), static_cast<std::size_t>(one[1].toInt())),
                  text(one[2]));
}

TEST(TextCases, Search)
{
    struct Kind {
        const char *name;
        const char *locale;
        bool isFound;
    };
    for (const Kind &kind :
         {Kind{"found", "en", true}, Kind{"missing", "en", false},
          Kind{"foundInTurkish", "tr", true}, Kind{"missingInTurkish", "tr", false}}) {
        const IcuTextRules rules(kind.locale);
        for (const auto &one : cases(kind.name))
            EXPECT_EQ(rules.containsIgnoringCase(text(one[0]), text(one[1])), kind.isFound)
                << text(one[1]) << " in " << text(one[0]);
    }
}

} // namespace
} // namespace trellisport::platform
