#pragma once

namespace trellisport::platform {

/// Makes the fonts known that were built in: a page has none of the system's. Once, when the
/// toolkit's application is there and nothing has been drawn.
void loadFonts();

} // namespace trellisport::platform
