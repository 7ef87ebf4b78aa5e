#include "Platform/Web/FetchHttpSession.h"

#include "Platform/Toolkit/TransportSentences.h"
#include "Platform/Web/JsText.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QString>

#include <emscripten/em_macros.h>

#include <new>
#include <sstream>
#include <unordered_map>
#include <utility>

// Script/Fetch.js
extern "C" void trellisport_fetch(int number, const char *method, const char *url,
                                  const char *headers, const char *body, std::size_t bodySize,
                                  int timeout, double limit);
extern "C" void trellisport_cancel_fetch(int number);

namespace trellisport::platform {

namespace {

/// As Script/Fetch.js numbers them.
enum class ReplyKind { Reply, Cancelled, TimedOut, Unreachable, Lost, TooLarge, Other };

/// Who waits, by the exchanges' numbers.
std::unordered_map<int, HttpSession::Completion> waiting;
int lastNumber = 0;
/// The body that is being handed over.
std::string body;

class FetchExchange final : public HttpExchange {
public:
    explicit FetchExchange(int number)
        : m_number(number)
    {
    }
    FetchExchange(const FetchExchange &) = delete;
    FetchExchange &operator=(const FetchExchange &) = delete;
    ~FetchExchange() override { trellisport_cancel_fetch(m_number); }

    void cancel() override { trellisport_cancel_fetch(m_number); }

private:
    int m_number;
};

QByteArray pairs(const std::vector<HttpHeader> &headers)
{
    QJsonArray list;
    for (const HttpHeader &header : headers) {
        list.append(
            QJsonArray{QString::fromStdString(header.name), QString::fromStdString(header.value)});
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

std::vector<HttpHeader> readHeaders(const std::string &lines)
{
    std::vector<HttpHeader> headers;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t colon = line.find(':');
        headers.push_back({line.substr(0, colon), line.substr(colon + 1)});
    }
    return headers;
}

HttpResult result(ReplyKind kind, int status)
{
    switch (kind) {
    case ReplyKind::Reply:
        return HttpReply{status, readHeaders(takeText()), std::exchange(body, {})};
    case ReplyKind::Cancelled:
        return transportError(TransportFailure::Cancelled);
    case ReplyKind::TimedOut:
        return transportError(TransportFailure::TimedOut);
    case ReplyKind::Unreachable:
        return transportError(TransportFailure::CannotConnect);
    case ReplyKind::Lost:
        return transportError(TransportFailure::ConnectionLost);
    case ReplyKind::TooLarge:
        return transportError(TransportFailure::ReplyTooLarge);
    case ReplyKind::Other:
        break;
    }
    return transportError(TransportFailure::Other);
}

} // namespace

/// Null where there is no room for it.
extern "C" EMSCRIPTEN_KEEPALIVE char *trellisport_reply_memory(std::size_t size)
{
    try {
        body.resize(size);
        return body.data();
    } catch (const std::bad_alloc &) {
        body = {};
        return nullptr;
    }
}

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_reply(int number, int kind, int status)
{
    const auto completion = waiting.extract(number);
    completion.mapped()(result(static_cast<ReplyKind>(kind), status));
}

FetchHttpSession::FetchHttpSession(FetchHttpOptions options)
    : m_options(options)
{
}

std::unique_ptr<HttpExchange> FetchHttpSession::send(HttpRequest request, Completion completion)
{
    const int number = ++lastNumber;
    waiting.emplace(number, std::move(completion));
    trellisport_fetch(
        number, request.method.c_str(), request.url.c_str(), pairs(request.headers).constData(),
        request.body ? request.body->data() : nullptr, request.body ? request.body->size() : 0,
        static_cast<int>(m_options.timeout.count()), static_cast<double>(m_options.replyLimit));
    return std::make_unique<FetchExchange>(number);
}

} // namespace trellisport::platform
