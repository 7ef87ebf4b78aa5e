#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryFile>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

struct Ending {
    int status = 0;
    std::string complaint;
};

/// Starts the program with this address and waits for its end.
Ending startWith(const QString &address, const QStringList &arguments = {},
                 const QString &authorityFile = {})
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TRELLISPORT_BASE_URL"), address);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("/nonexistent"));
    // With a display it would show a window.
    for (const char *display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(QString::fromLatin1(display));
    }
    environment.insert(QStringLiteral("TRELLISPORT_CA_FILE"), authorityFile);
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(PROGRAM), arguments);
    EXPECT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    return {program.exitCode(), program.readAllStandardError().toStdString()};
}

TEST(Refusal, AnAddressThatCannotBeIsOneSentenceAndAFailure)
{
    for (const char *address : {"", "http://agent.example/api/v1", "https://agent.example/api/v1/",
                                "https://agent.example", "https://agent.example/api/v1?x=1",
                                "agent.example", "https://ag ent.example/api/v1"}) {
        const Ending ending = startWith(QString::fromLatin1(address));
        EXPECT_NE(ending.status, 0) << address;
        EXPECT_THAT(ending.complaint, ::testing::StartsWith("trellisport-manager: ")) << address;
        EXPECT_THAT(ending.complaint, EndsWith(".\n")) << address;
        EXPECT_EQ(std::count(ending.complaint.begin(), ending.complaint.end(), '\n'), 1)
            << ending.complaint;
    }
}

TEST(Refusal, AFileOfAuthoritiesThatCannotBeUsedIsOneSentenceAndAFailure)
{
    const QString address = QStringLiteral("https://agent.example/api/v1");
    const Ending missing = startWith(address, {}, QStringLiteral("/nowhere/at-all.pem"));
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.complaint,
              "trellisport-manager: The file of certificate authorities \"/nowhere/at-all.pem\" "
              "does not exist.\n");

    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("no certificate\n");
    file.close();
    const Ending wrong = startWith(address, {}, file.fileName());
    EXPECT_EQ(wrong.status, 2);
    EXPECT_THAT(wrong.complaint, EndsWith("holds no certificates in PEM form.\n"));
    EXPECT_EQ(std::count(wrong.complaint.begin(), wrong.complaint.end(), '\n'), 1);
}

TEST(Refusal, AnUnknownOptionIsNamed)
{
    const Ending ending =
        startWith(QStringLiteral("https://agent.example/api/v1"), {QStringLiteral("--nonsense")});
    EXPECT_NE(ending.status, 0);
    EXPECT_THAT(ending.complaint, HasSubstr("nonsense"));
}

} // namespace
} // namespace trellisport::test
