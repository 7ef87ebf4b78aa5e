#pragma once

#include <QString>
#include <QStringList>

namespace trellisport::platform {

/// Whether a window could be shown: a compositor or X server answers where the environment says,
/// or the toolkit was told to do without. The toolkit itself ends the program when it finds none.
[[nodiscard]] bool displayIsReachable();

/// Takes over from the user's session what says where its display is, for a program that was
/// started before there was one. session: "NAME=value" entries. Main thread.
void adoptDisplay(const QStringList &session);

/// Tells the toolkit to use the compositor where that is the only display that answers: by itself
/// it would ask for the other kind unless the session says which it is. Main thread.
void preferReachableDisplay();

} // namespace trellisport::platform
