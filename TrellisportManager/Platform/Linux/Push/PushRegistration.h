#pragma once

#include "Platform/Linux/Push/PrivateFile.h"
#include "Platform/Linux/Push/PushKeys.h"

#include <QString>

#include <optional>

namespace trellisport::platform {

/// What a registration with a push service lives on.
struct PushRegistration {
    QString distributor; ///< the bus name it was made with; empty: none yet
    QString token;       ///< what the push service calls us; empty: none yet
    PushKeys keys;

    friend bool operator==(const PushRegistration &, const PushRegistration &) = default;
};

/// Keeps the registration for the next start.
class PushRegistrationStore {
public:
    explicit PushRegistrationStore(const QString &path);

    /// Absent when there is none or it can't be used.
    [[nodiscard]] std::optional<PushRegistration> load() const;
    /// False when it could not be kept; the registration then lasts as long as the program.
    bool save(const PushRegistration &registration) const;

private:
    PrivateFile m_file;
};

} // namespace trellisport::platform
