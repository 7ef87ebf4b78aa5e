#pragma once

#include "Platform/LinkOpener.h"

#include <string>
#include <vector>

namespace trellisport::test {

/// Opens nothing and keeps what it was asked to open.
class FakeLinkOpener : public platform::LinkOpener {
public:
    bool open(const std::string &url) override
    {
        opened.push_back(url);
        return succeeds;
    }

    std::vector<std::string> opened;
    bool succeeds = true;
};

} // namespace trellisport::test
