#include "Fuzz/Targets/Must.h"
#include "ServiceAccess/RecordCoding.h"

#include <array>
#include <cstdint>
#include <string>

// The first byte says what is decoded, the rest is the document. What decodes must come back alike
// from its own encoding.

namespace {

using namespace trellisport;

template <typename T>
void decodeAs(const std::string &document)
{
    std::string written;
    try {
        const T value = decode<T>(document);
        written = encode(value);
        must(decode<T>(written) == value, "what was encoded decodes to the same value");
    } catch (const DecodingError &) {
        must(written.empty(), "what was encoded decodes");
    }
}

constexpr std::array decoders{
    decodeAs<std::vector<Project>>,
    decodeAs<ProjectDetail>,
    decodeAs<std::vector<Message>>,
    decodeAs<std::vector<Decision>>,
    decodeAs<DashboardData>,
    decodeAs<std::vector<BidInfo>>,
    decodeAs<std::vector<TimelineEvent>>,
    decodeAs<std::vector<DevLog>>,
    decodeAs<std::vector<Report>>,
    decodeAs<AppConfig>,
    decodeAs<TextMap>,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size > 0) {
        decoders[data[0] % decoders.size()](
            std::string(reinterpret_cast<const char *>(data) + 1, size - 1));
    }
    return 0;
}
