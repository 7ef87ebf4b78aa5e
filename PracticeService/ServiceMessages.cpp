#include "PracticeService/ServiceMessages.h"

#include "ServiceAccess/RecordCoding.h"

#include <QByteArray>
#include <QCryptographicHash>

namespace trellisport::practice {

ServiceReply refusal(int status, const std::string &reason)
{
    ServiceReply reply;
    reply.body = encode(TextMap{{"error", reason}});
    reply.status = status;
    return reply;
}

ServiceReply wrongMethod(const char *allowed)
{
    ServiceReply reply = refusal(405, std::string("Only ") + allowed + " is possible here.");
    reply.headers.emplace_back("Allow", allowed);
    return reply;
}

ServiceReply unknownPath()
{
    return refusal(404, "There is nothing under this path.");
}

bool isGet(const ServiceRequest &request)
{
    return request.method == "GET" || request.method == "HEAD";
}

std::string entityTagOf(const std::string &bytes)
{
    const QByteArray hash = QCryptographicHash::hash(
        QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())),
        QCryptographicHash::Sha1);
    return '"' + hash.toHex().left(24).toStdString() + '"';
}

bool isHeld(const ServiceRequest &request, const std::string &tag)
{
    // A tag never stands inside another, so a search will do for a list of tags.
    return request.ifNoneMatch == "*" || request.ifNoneMatch.find(tag) != std::string::npos;
}

} // namespace trellisport::practice
