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

void ServiceControl::answer(Answers how) const
{
    QString mode = QStringLiteral("normal");
    switch (how) {
    case Answers::Normally:
        break;
    case Answers::WithErrors:
        mode = QStringLiteral("error");
        break;
    case Answers::Never:
        mode = QStringLiteral("stall");
        break;
    case Answers::WithEmptyLists:
        mode = QStringLiteral("empty");
        break;
    }
    QString root = m_baseURL;
    root.chop(int(QLatin1String("/api/v1").size()));
    (void)exchange("POST", root + QStringLiteral("/control/answers?mode=") + mode, "{}");
}

QByteArray ServiceControl::get(const QString &path) const
{
    return exchange("GET", m_baseURL + path);
}

QByteArray ServiceControl::exchange(const char *method, const QString &url,
                                    const QByteArray &body) const
{
    struct Answer {
        std::atomic<bool> arrived = false;
        platform::HttpResult result = platform::HttpReply{};
    };
    const auto answer = std::make_shared<Answer>();
    platform::HttpRequest request{method, url.toStdString(), {}, {}};
    if (!body.isEmpty()) {
        request.body = body.toStdString();
    }
    const auto handle = platform::Platform::current().httpSession()->send(
        std::move(request), [answer](platform::HttpResult result) {
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
        std::exit(1);
    }
    return QByteArray::fromStdString(reply->body);
}

} // namespace trellisport::tour
