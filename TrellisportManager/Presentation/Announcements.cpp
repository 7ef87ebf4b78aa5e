#include "Presentation/Announcements.h"

#include <QAccessible>

namespace trellisport {

void Announcements::say(const QString &text)
{
    if (!text.isEmpty() && QAccessible::isActive()) {
        Q_EMIT said(text);
    }
}

} // namespace trellisport
