#include "ServiceAccess/JsonDocument.h"
#include "ServiceAccess/RecordCoding.h"
#include "ServiceAccess/RecordDecoder.h"

namespace trellisport {

template <typename T>
T decode(std::string body)
{
    TextArena texts(body.size());
    const JsonDocument document(std::move(body));
    return decoding::RecordDecoder(texts).read<T>(document.root(), JsonPlace());
}

template Project decode(std::string);
template ProjectDetail decode(std::string);
template Message decode(std::string);
template Decision decode(std::string);
template DashboardData decode(std::string);
template BidInfo decode(std::string);
template TimelineEvent decode(std::string);
template DevLog decode(std::string);
template Report decode(std::string);
template AppConfig decode(std::string);
template TextMap decode(std::string);

template std::vector<Project> decode(std::string);
template std::vector<ProjectDetail> decode(std::string);
template std::vector<Message> decode(std::string);
template std::vector<Decision> decode(std::string);
template std::vector<DashboardData> decode(std::string);
template std::vector<BidInfo> decode(std::string);
template std::vector<TimelineEvent> decode(std::string);
template std::vector<DevLog> decode(std::string);
template std::vector<Report> decode(std::string);
template std::vector<AppConfig> decode(std::string);

} // namespace trellisport
