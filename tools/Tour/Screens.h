#pragma once

#include "Tour/ServiceControl.h"
#include "Tour/Stage.h"

namespace trellisport::tour {

// Each draws one screen in its states. What makes a state is the service's doing.

/// Loading, loaded, failed.
void drawDashboard(Stage &stage, const ServiceControl &service);
/// Loading, loaded, scrolled, narrowed by chip and by search, nothing found, failed.
void drawProjectsList(Stage &stage, const ServiceControl &service);
/// The shell while it loads and failed; then every tab loading, filled and empty.
void drawWorkspace(Stage &stage, const ServiceControl &service);
/// Loading, loaded, saving, saved, failed.
void drawSettings(Stage &stage, const ServiceControl &service);

} // namespace trellisport::tour
