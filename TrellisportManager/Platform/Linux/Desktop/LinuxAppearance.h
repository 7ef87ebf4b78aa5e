#pragma once

#include "Platform/Appearance.h"
#include "Platform/Environment.h"
#include "Platform/Toolkit/AppearanceObservers.h"

namespace trellisport::platform {

/// The appearance that a Linux desktop or phone asks for. TRELLISPORT_TEXT_SCALE, when it is set to
/// a number, is the text scale whatever the desktop says.
class LinuxAppearance final : public Appearance {
public:
    /// environment must outlive it.
    explicit LinuxAppearance(const Environment &environment);

    [[nodiscard]] double textScale() const override;
    [[nodiscard]] bool windowsHaveFrames() const override;
    /// None: panels and keyboards make windows smaller.
    [[nodiscard]] Insets safeArea() const override { return {}; }
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> changed) override;

    /// What the desktop's settings say; 1 until they have said something.
    void setDesktopTextScale(double scale);

private:
    const Environment &m_environment;
    double m_desktopTextScale = 1;
    AppearanceObservers m_observers;
};

} // namespace trellisport::platform
