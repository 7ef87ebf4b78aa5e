#pragma once

#include "Platform/Appearance.h"
#include "Platform/Toolkit/AppearanceObservers.h"

namespace trellisport::platform {

/// What the page's styles tell: the browser's text size, and the edges that a phone's screen keeps
/// for itself. One of these lives at a time.
class PageAppearance final : public Appearance {
public:
    PageAppearance();
    PageAppearance(const PageAppearance &) = delete;
    PageAppearance &operator=(const PageAppearance &) = delete;
    ~PageAppearance() override;

    [[nodiscard]] double textScale() const override;
    [[nodiscard]] bool windowsHaveFrames() const override { return false; }
    [[nodiscard]] Insets safeArea() const override;
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> changed) override;

    /// For the page's events.
    void tell() { m_observers.tell(); }

private:
    AppearanceObservers m_observers;
};

} // namespace trellisport::platform
