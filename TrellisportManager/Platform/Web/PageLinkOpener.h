#pragma once

#include "Platform/LinkOpener.h"

namespace trellisport::platform {

/// Opens links in a tab of their own.
class PageLinkOpener final : public LinkOpener {
public:
    bool open(const std::string &url) override;
};

} // namespace trellisport::platform
