#include "Platform/Linux/Push/SeenMessages.h"
#include "Support/Waiting.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace trellisport::platform {
namespace {

QByteArray name(int number)
{
    return QByteArray::number(number);
}

TEST(SeenMessages, KnowsWhatWasAdded)
{
    const QTemporaryDir folder;
    SeenMessages seen(folder.filePath(QStringLiteral("seen")));
    EXPECT_FALSE(seen.contains("a"));
    seen.add("a");
    EXPECT_TRUE(seen.contains("a"));
    EXPECT_FALSE(seen.contains("b"));
}

TEST(SeenMessages, KnowsItAfterARestart)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("seen"));
    {
        SeenMessages seen(path);
        seen.add("a");
    }
    EXPECT_TRUE(SeenMessages(path).contains("a"));
}

TEST(SeenMessages, IsKeptSoonAndWithoutWaitingForTheEnd)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("seen"));
    SeenMessages seen(path);
    seen.add("a");
    EXPECT_TRUE(test::waitUntil([&] { return SeenMessages(path).contains("a"); }));
}

TEST(SeenMessages, ForgetsTheOldestBeyondItsCapacity)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("seen"));
    {
        SeenMessages seen(path);
        for (int number = 0; number <= SeenMessages::capacity; ++number) {
            seen.add(name(number));
        }
        EXPECT_FALSE(seen.contains(name(0)));
        EXPECT_TRUE(seen.contains(name(1)));
    }
    EXPECT_TRUE(SeenMessages(path).contains(name(1)));
}

TEST(SeenMessages, ADamagedFileIsAsGoodAsNone)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("seen"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a digest\n\n00\n");
    file.close();
    SeenMessages seen(path);
    EXPECT_FALSE(seen.contains("a"));
    seen.add("a");
    EXPECT_TRUE(seen.contains("a"));
}

} // namespace
} // namespace trellisport::platform
