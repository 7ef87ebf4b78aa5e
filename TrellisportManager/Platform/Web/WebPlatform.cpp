#include "Platform/Web/WebPlatform.h"

namespace trellisport::platform {

Platform &Platform::current()
{
    // Never destroyed: a page has no end at which that could be done.
    static auto *platform = new WebPlatform;
    return *platform;
}

} // namespace trellisport::platform
