#include "Platform/Web/JsText.h"

#include <emscripten/em_macros.h>

#include <utility>

namespace trellisport::platform {

namespace {
std::string filled;
}

EMSCRIPTEN_KEEPALIVE char *trellisport_text_buffer(std::size_t size)
{
    filled.resize(size);
    return filled.data();
}

std::string takeText()
{
    return std::exchange(filled, {});
}

} // namespace trellisport::platform
