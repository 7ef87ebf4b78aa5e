#include "Platform/Linux/Desktop/LinuxAppearance.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace trellisport::platform {

namespace {

/// The shorter side of the largest phone's screen, in points; no desktop's is as short.
constexpr int phoneSide = 500;
/// The resolution for which fonts have the size that they say.
constexpr double usualFontResolution = 96;

std::optional<double> number(const std::string &text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

double clamped(double scale)
{
    return std::clamp(scale, Appearance::smallestTextScale, Appearance::largestTextScale);
}

/// How much larger fonts are drawn than windows, by the resolution that the system gives for them.
double fontResolutionScale()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? 1 : screen->logicalDotsPerInch() / usualFontResolution;
}

} // namespace

LinuxAppearance::LinuxAppearance(const Environment &environment)
    : m_environment(environment)
{
}

double LinuxAppearance::textScale() const
{
    if (const auto set = m_environment.variable("TRELLISPORT_TEXT_SCALE")) {
        if (const auto scale = number(*set)) {
            return clamped(*scale);
        }
    }
    // On X11 desktops make their text scale part of the resolution, by which the toolkit draws
    // windows larger as a whole.
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        return clamped(fontResolutionScale());
    }
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        return clamped(fontResolutionScale() * m_desktopTextScale);
    }
    return clamped(m_desktopTextScale);
}

bool LinuxAppearance::windowsHaveFrames() const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen == nullptr ||
           std::min(screen->size().width(), screen->size().height()) > phoneSide;
}

std::shared_ptr<void> LinuxAppearance::observe(std::function<void()> changed)
{
    return m_observers.add(std::move(changed));
}

void LinuxAppearance::setDesktopTextScale(double scale)
{
    if (std::isfinite(scale) && scale > 0 && scale != m_desktopTextScale) {
        m_desktopTextScale = scale;
        m_observers.tell();
    }
}

} // namespace trellisport::platform
