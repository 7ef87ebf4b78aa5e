#include "PracticeService/Options.h"

#include <gmock/gmock.h>

#include <QDir>

namespace trellisport::practice {
namespace {

std::variant<Options, Notice> read(const QString &line)
{
    return readOptions((QStringLiteral("program ") + line).split(u' ', Qt::SkipEmptyParts));
}

TEST(Options, DefaultsAreForAPersonWhoJustStartsIt)
{
    const auto options = std::get<Options>(read({}));
    EXPECT_EQ(options.port, 8443);
    EXPECT_FALSE(options.begin);
    EXPECT_EQ(options.scale, 1);
    EXPECT_DOUBLE_EQ(options.speed, 1.0);
    EXPECT_FALSE(options.control);
    EXPECT_THAT(options.dataFolder, testing::StartsWith("/"));
    EXPECT_EQ(options.appFolder, "");
}

TEST(Options, AreRead)
{
    const auto options =
        std::get<Options>(read(QStringLiteral("--port 0 --data sub/folder --app web --seed 42 "
                                              "--begin 2026-03-09T08:15:00Z --scale=100 "
                                              "--speed 0.5 --control --verbose")));
    EXPECT_EQ(options.port, 0);
    EXPECT_EQ(options.dataFolder,
              QDir().absoluteFilePath(QStringLiteral("sub/folder")).toStdString());
    EXPECT_EQ(options.appFolder, QDir().absoluteFilePath(QStringLiteral("web")).toStdString());
    EXPECT_EQ(options.seed, 42U);
    EXPECT_EQ(options.begin, momentOf("2026-03-09T08:15:00Z"));
    EXPECT_EQ(options.scale, 100);
    EXPECT_DOUBLE_EQ(options.speed, 0.5);
    EXPECT_TRUE(options.control);
    EXPECT_TRUE(options.verbose);
}

TEST(Options, BadOnesAreOneSentence)
{
    for (const char *line : {"--port",       "--port x",     "--port -1",
                             "--port 65536", "--port 1e3",   "--port 99999999999999",
                             "--scale 0",    "--scale 1001", "--scale 1.5",
                             "--speed -1",   "--speed nan",  "--speed inf",
                             "--speed fast", "--seed -1",    "--begin",
                             "--begin now",  "--data=",      "--app",
                             "--app=",       "--nonsense",   "extra"}) {
        const auto notice = read(QString::fromLatin1(line));
        ASSERT_TRUE(std::holds_alternative<Notice>(notice)) << line;
        EXPECT_EQ(std::get<Notice>(notice).exitCode, 2) << line;
        EXPECT_THAT(std::get<Notice>(notice).text,
                    testing::AllOf(testing::EndsWith("."), testing::Not(testing::HasSubstr("\n"))))
            << line;
    }
}

TEST(Options, HelpNamesEveryOption)
{
    const auto notice = std::get<Notice>(read(QStringLiteral("--help")));
    EXPECT_EQ(notice.exitCode, 0);
    for (const char *option :
         {"--port", "--data", "--app", "--seed", "--begin", "--scale", "--speed", "--control",
          "--verbose", "--help", "--version", "/control/tick"})
        EXPECT_THAT(notice.text, testing::HasSubstr(option));
}

} // namespace
} // namespace trellisport::practice
