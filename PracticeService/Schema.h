#pragma once

#include "PracticeService/Database.h"

namespace trellisport::practice {

/// Makes the tables of an empty file. Throws StoreError, also for a file whose tables another
/// version made.
void ensureSchema(Database &database);

} // namespace trellisport::practice
