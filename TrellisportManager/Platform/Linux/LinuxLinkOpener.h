#pragma once

#include "Platform/LinkOpener.h"

namespace trellisport::platform {

/// Hands addresses to the desktop. Only https and mailto leave the program: what stands in an
/// address comes from outside, and other schemes start other programs.
class LinuxLinkOpener final : public LinkOpener {
public:
    bool open(const std::string &url) override;
};

} // namespace trellisport::platform
