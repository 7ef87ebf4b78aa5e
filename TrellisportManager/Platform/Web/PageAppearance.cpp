#include "Platform/Web/PageAppearance.h"

#include <emscripten/em_macros.h>

#include <algorithm>
#include <array>
#include <utility>

// Script/Page.js
extern "C" double trellisport_text_scale();
extern "C" void trellisport_safe_area(double *insets);
extern "C" void trellisport_watch_page();

namespace trellisport::platform {

namespace {
PageAppearance *current = nullptr;
}

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_page_changed()
{
    if (current) {
        current->tell();
    }
}

PageAppearance::PageAppearance()
{
    current = this;
    trellisport_watch_page();
}

PageAppearance::~PageAppearance()
{
    current = nullptr;
}

double PageAppearance::textScale() const
{
    return std::clamp(trellisport_text_scale(), smallestTextScale, largestTextScale);
}

Appearance::Insets PageAppearance::safeArea() const
{
    std::array<double, 4> edges{};
    trellisport_safe_area(edges.data());
    return {.top = edges[0], .bottom = edges[2], .left = edges[3], .right = edges[1]};
}

std::shared_ptr<void> PageAppearance::observe(std::function<void()> changed)
{
    return m_observers.add(std::move(changed));
}

} // namespace trellisport::platform
