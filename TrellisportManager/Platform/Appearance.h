#pragma once

#include <functional>
#include <memory>

namespace trellisport::platform {

/// How things are to look on the user's system. Main thread only.
class Appearance {
public:
    static constexpr double smallestTextScale = 0.8;
    static constexpr double largestTextScale = 2.0;

    /// The strips along a window's edges, in points, that a notch, a home indicator or rounded
    /// corners take.
    struct Insets {
        double top = 0;
        double bottom = 0;
        double left = 0;
        double right = 0;
    };

    Appearance() = default;
    Appearance(const Appearance &) = delete;
    Appearance &operator=(const Appearance &) = delete;
    virtual ~Appearance() = default;

    /// How much larger than usual the user wants text, within the limits above; 1 is the usual
    /// size.
    [[nodiscard]] virtual double textScale() const = 0;
    /// Whether a window has a frame and a title bar to move and close it by. It has none where the
    /// screen is all its own. Only once the toolkit's application is there; does not change.
    [[nodiscard]] virtual bool windowsHaveFrames() const = 0;
    [[nodiscard]] virtual Insets safeArea() const = 0;

    /// changed is called whenever one of these may have changed, for as long as what is given back
    /// lives. Both end on the main thread.
    [[nodiscard]] virtual std::shared_ptr<void> observe(std::function<void()> changed) = 0;
};

} // namespace trellisport::platform
