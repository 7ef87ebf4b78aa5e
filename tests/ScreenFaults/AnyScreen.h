#pragma once

#include "Presentation/ScreenModel.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace trellisport::test {

/// The model of some screen, seen from outside. It is the test's until it is destroyed.
struct AnyScreen {
    std::shared_ptr<ScreenModel> model;
    /// All that it shows, in one text.
    std::function<std::string()> shown;
    /// Loads once more while another load may be under way; empty when the screen never does.
    std::function<void()> loadAgain;
};

/// What the tests need to know of a screen.
struct ScreenKind {
    const char *name;
    const char *url;    ///< the end of the address that it loads
    std::string first;  ///< a reply
    std::string second; ///< another, which shows something else
    std::function<AnyScreen(TrellisportAPI &)> make;
};

void PrintTo(const ScreenKind &kind, std::ostream *stream);

/// Every screen that loads something.
[[nodiscard]] const std::vector<ScreenKind> &screenKinds();
/// Those of them that may load while they load: by pulling, or by a timer.
[[nodiscard]] std::vector<ScreenKind> reloadingScreenKinds();

} // namespace trellisport::test
