#include "Platform/Web/InPlaceExecutor.h"

namespace trellisport::platform {

void InPlaceExecutor::run(std::function<void()> work)
{
    work();
}

} // namespace trellisport::platform
