#pragma once

namespace trellisport::platform {

/// From now on the browser's way back is the console's: it comes as the key for it to the window
/// that has the focus. Once, when there is a window.
void followPageHistory();

} // namespace trellisport::platform
