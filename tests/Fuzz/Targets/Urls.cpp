#include "Fuzz/Targets/Must.h"
#include "ServiceAccess/UrlSyntax.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace trellisport;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const auto parts = splitURL(text);
    must(parts.has_value() == isAbsoluteURL(text), "the two ways to ask agree");
    if (!parts) {
        (void)isURLReference(text);
        return 0;
    }
    must(isURLReference(text), "an absolute URL is a reference too");
    must(text.find_first_of(" \"<>\\^`{|}") == std::string_view::npos,
         "what must be escaped is escaped");
    std::string again = std::string(parts->scheme) + "://";
    if (parts->userInfo) {
        again += std::string(*parts->userInfo) + '@';
    }
    again += parts->host;
    if (parts->port) {
        again += ':' + std::string(*parts->port);
    }
    again += parts->path;
    if (parts->query) {
        again += '?' + std::string(*parts->query);
    }
    if (parts->fragment) {
        again += '#' + std::string(*parts->fragment);
    }
    must(again == text, "the parts make up the URL");
    return 0;
}
