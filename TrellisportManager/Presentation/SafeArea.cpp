#include "Presentation/SafeArea.h"

#include "Platform/Platform.h"

namespace trellisport {

SafeArea::SafeArea(QObject *parent)
    : QObject(parent)
    , m_observation(platform::Platform::current().appearance().observe([this] { follow(); }))
{
    follow();
}

void SafeArea::follow()
{
    const auto insets = platform::Platform::current().appearance().safeArea();
    if (m_top != insets.top || m_bottom != insets.bottom || m_left != insets.left ||
        m_right != insets.right) {
        m_top = insets.top;
        m_bottom = insets.bottom;
        m_left = insets.left;
        m_right = insets.right;
        Q_EMIT changed();
    }
}

} // namespace trellisport
