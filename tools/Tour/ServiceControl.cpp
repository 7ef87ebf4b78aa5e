#include "Tour/ServiceControl.h"

#include "Platform/Platform.h"

#include <QCoreApplication>
#include <QTextStream>

#include <atomic>
#include <cstdlib>
#include <memory>

namespace trellisport::tour {

ServiceControl::ServiceControl(const QString &baseURL)
    : m_baseURL(baseURL)
{
}

void ServiceControl::stall(const QString &path) const
{
    fault(path, QStringLiteral("delay_ms=120000"));
}

void ServiceControl::fail(const QString &path, int status) const
{
    fault(path, QStringLiteral("status=%1").arg(status));
}

QByteArray ServiceControl::get(const QString &path) const
{
    return exchange("GET", m_baseURL + path);
}

void ServiceControl::fault(const QString &path, const QString &what) const
{
    QString root = m_baseURL;
    root.chop(QLatin1String("/api/v1").size());
    (void)exchange("POST", QStringLiteral("%1/control/fault?path=%2&%3").arg(root, path, what));
}

QByteArray ServiceControl::exchange(const char *method, const QString &url) const
{
    struct Answer {
        std::atomic<bool> arrived = false;
        platform::HttpResult result = platform::HttpReply{};
    };
    const auto answer = std::make_shared<Answer>();
    const auto handle = platform::Platform::current().httpSession()->send(
        {method, url.toStdString(), {}, {}}, [answer](platform::HttpResult result) {
            answer->result = std::move(result);
            answer->arrived = true;
        });
    while (!answer->arrived) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    const auto *reply = std::get_if<platform::HttpReply>(&answer->result);
    if (reply == nullptr || reply->status < 200 || reply->status > 299) {
        QTextStream(stderr) << "The practice service did not take " << method << " " << url
                            << "; was it started with --control?\n";
        std::exit(1); // NOLINT(concurrency-mt-unsafe): nobody else ends the program
    }
    return QByteArray::fromStdString(reply->body);
}

} // namespace trellisport::tour
