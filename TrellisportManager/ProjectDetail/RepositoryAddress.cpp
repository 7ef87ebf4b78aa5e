#include "ProjectDetail/RepositoryAddress.h"

#include "ServiceAccess/UrlSyntax.h"

#include <cstdlib>
#include <iostream>

namespace trellisport {

QString repositoryAddress(std::string_view text)
{
    if (!isURLReference(text)) {
        std::cerr << "Unexpectedly found nil while unwrapping an Optional value" << std::endl;
        std::abort();
    }
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace trellisport
