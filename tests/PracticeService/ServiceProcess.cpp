#include "ServiceProcess.h"

#include <QRegularExpression>

namespace trellisport::practice {

namespace {
constexpr int patience = 30'000;
}

ServiceProcess::ServiceProcess(const QString &folder, const QStringList &arguments)
{
    m_process.start(QStringLiteral(PRACTICE_SERVICE_PROGRAM),
                    QStringList{QStringLiteral("--port"), QStringLiteral("0"),
                                QStringLiteral("--data"), folder, QStringLiteral("--speed"),
                                QStringLiteral("0"), QStringLiteral("--control")} +
                        arguments);
    while (!m_process.canReadLine() && m_process.waitForReadyRead(patience)) {
    }
    const QRegularExpression shape(
        QStringLiteral("^listening on (https://127\\.0\\.0\\.1:\\d+)/api/v1, authority (.*)\n$"));
    const auto match = shape.match(QString::fromUtf8(m_process.readLine()));
    m_url = match.captured(1).toStdString();
    m_authority = match.captured(2).toStdString();
}

ServiceProcess::~ServiceProcess()
{
    kill();
}

void ServiceProcess::kill()
{
    m_process.kill();
    m_process.waitForFinished(patience);
}

bool ServiceProcess::terminate(int milliseconds)
{
    m_process.terminate();
    return m_process.waitForFinished(milliseconds);
}

FinishedRun runService(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(PRACTICE_SERVICE_PROGRAM), arguments);
    FinishedRun run;
    run.finished = process.waitForFinished(patience);
    run.exitCode = process.exitCode();
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    return run;
}

} // namespace trellisport::practice
