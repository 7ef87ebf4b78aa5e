#pragma once

#include <string>

namespace trellisport::platform {

/// Hands an address to the system's browser.
class LinkOpener {
public:
    LinkOpener() = default;
    LinkOpener(const LinkOpener &) = delete;
    LinkOpener &operator=(const LinkOpener &) = delete;
    virtual ~LinkOpener() = default;

    /// Opens an absolute URL outside the program. Main thread; returns at once.
    /// False when no program for it was found.
    virtual bool open(const std::string &url) = 0;
};

} // namespace trellisport::platform
