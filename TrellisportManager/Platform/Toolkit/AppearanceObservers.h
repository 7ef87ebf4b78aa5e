#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace trellisport::platform {

/// Who wants to hear of a change, as Appearance::observe() has it. Main thread.
class AppearanceObservers {
public:
    [[nodiscard]] std::shared_ptr<void> add(std::function<void()> changed)
    {
        const auto place = m_list->insert(m_list->end(), std::move(changed));
        return {nullptr, [list = m_list, place](void *) { list->erase(place); }};
    }
    void tell()
    {
        // An observer may go when it is told.
        for (auto at = m_list->begin(); at != m_list->end();) {
            const auto changed = at++;
            (*changed)();
        }
    }

private:
    std::shared_ptr<std::list<std::function<void()>>> m_list =
        std::make_shared<std::list<std::function<void()>>>();
};

} // namespace trellisport::platform
