#pragma once

#include "Tour/ServiceControl.h"
#include "Tour/Stage.h"

namespace trellisport::tour {

/// The dashboard loading, loaded, failed.
void drawDashboard(Stage &stage, const ServiceControl &service);

} // namespace trellisport::tour
