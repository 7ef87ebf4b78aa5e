#pragma once

#include "Platform/Appearance.h"
#include "Platform/Environment.h"

#include <list>

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
    using Observers = std::list<std::function<void()>>;

    const Environment &m_environment;
    double m_desktopTextScale = 1;
    std::shared_ptr<Observers> m_observers = std::make_shared<Observers>();
};

} // namespace trellisport::platform
