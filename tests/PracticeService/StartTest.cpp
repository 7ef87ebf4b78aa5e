#include "CurlClient.h"
#include "ServiceProcess.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace trellisport::practice {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

/// One clear sentence, and nothing that looks like success.
void expectComplaint(const FinishedRun &run, const char *about)
{
    EXPECT_TRUE(run.finished);
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.output.isEmpty()) << run.output.toStdString();
    EXPECT_THAT(run.errors.toStdString(), AllOf(HasSubstr(about), EndsWith(".\n")));
    EXPECT_EQ(run.errors.count('\n'), 1) << run.errors.toStdString();
}

TEST(Start, TakenPortIsASentence)
{
    const QTemporaryDir one;
    const QTemporaryDir other;
    const ServiceProcess first(one.path());
    ASSERT_FALSE(first.url().empty());
    const QString port = QString::fromStdString(first.url()).section(u':', -1);
    expectComplaint(
        runService({QStringLiteral("--port"), port, QStringLiteral("--data"), other.path()}),
        "Address already in use");
}

TEST(Start, FolderInUseIsASentence)
{
    const QTemporaryDir folder;
    const ServiceProcess first(folder.path());
    ASSERT_FALSE(first.url().empty());
    expectComplaint(runService({QStringLiteral("--port"), QStringLiteral("0"),
                                QStringLiteral("--data"), folder.path()}),
                    "Another practice service");
}

TEST(Start, FolderThatCannotBeMadeIsASentence)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    expectComplaint(
        runService({QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--data"),
                    folder.filePath(QStringLiteral("file/folder"))}),
        "Cannot make the data folder");
}

TEST(Start, FolderThatCannotBeWrittenIsASentence)
{
    expectComplaint(runService({QStringLiteral("--port"), QStringLiteral("0"),
                                QStringLiteral("--data"), QStringLiteral("/proc/self")}),
                    "data folder");
}

TEST(Start, DamagedStateIsASentence)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("state.sqlite")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    expectComplaint(runService({QStringLiteral("--port"), QStringLiteral("0"),
                                QStringLiteral("--data"), folder.path()}),
                    "state.sqlite");
}

TEST(Start, AppFolderWithoutAPageIsASentence)
{
    const QTemporaryDir folder;
    const QTemporaryDir empty;
    for (const QString &app : {empty.path(), empty.filePath(QStringLiteral("not/there"))}) {
        expectComplaint(
            runService({QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--data"),
                        folder.path(), QStringLiteral("--app"), app}),
            "holds no index.html");
    }
}

TEST(Start, BadOptionIsASentence)
{
    expectComplaint(runService({QStringLiteral("--speed"), QStringLiteral("quick")}), "--speed");
}

TEST(Start, VersionAndHelpAreNoErrors)
{
    for (const char *option : {"--version", "--help"}) {
        const FinishedRun run = runService({QString::fromLatin1(option)});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_TRUE(run.output.contains("trellisport-practice-service")) << option;
        EXPECT_TRUE(run.errors.isEmpty()) << option;
    }
}

TEST(Start, TerminateEndsItWithinASecondDespiteIdleAndBusyConnections)
{
    const QTemporaryDir folder;
    ServiceProcess service(folder.path());
    ASSERT_FALSE(service.url().empty());
    CurlClient idle(service.authority());
    CurlClient other(service.authority());
    ASSERT_EQ(idle.get(service.api() + "/dashboard").status, 200);
    ASSERT_EQ(other.get(service.api() + "/config").status, 200);
    // One that says nothing, not even hello.
    const int silent = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(service.url().substr(18))));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(::connect(silent, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    // One whose reply takes its time.
    ASSERT_EQ(other
                  .send("POST",
                        service.url() + "/control/fault?path=/projects&delay_ms=100000&status=500",
                        "")
                  .status,
              200);
    CurlClient busy(service.authority());
    ASSERT_TRUE(busy.sendOnly(service.url(), "GET /api/v1/projects HTTP/1.1\r\n\r\n"));
    ASSERT_EQ(other.get(service.api() + "/config").status, 200);

    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(service.terminate(5000));
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(service.exitCode(), 0);
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("state.sqlite-wal"))))
        << "the state was not closed";
    ::close(silent);
}

} // namespace
} // namespace trellisport::practice
