#include "Fuzz/Targets/Must.h"
#include "Platform/Toolkit/OutsideAddress.h"

#include <algorithm>
#include <cstdint>
#include <string>

// Addresses that the service sends, on their way to the browser.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    const auto address = trellisport::platform::outsideAddress(text);
    if (!address) {
        return 0;
    }
    const std::string sent = address->toEncoded().toStdString();
    must(sent.starts_with("https://") || sent.starts_with("mailto:"),
         "only the web and mail are opened");
    must(std::all_of(sent.begin(), sent.end(), [](char c) { return c > ' ' && c < '\x7f'; }),
         "an address is printable ASCII");
    if (const auto fields = sent.find('?'); sent.starts_with("mailto:") && fields < sent.size()) {
        must(sent.compare(fields, 7, "?attach") != 0 &&
                 sent.find("&attach", fields) == std::string::npos,
             "a letter takes no file along");
    }
    must(trellisport::platform::outsideAddress(sent).has_value(),
         "what is opened could be opened again");
    return 0;
}
