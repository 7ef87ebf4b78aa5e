#pragma once

#include "Platform/Linux/Push/PrivateFile.h"
#include "Platform/Linux/Push/PushKeys.h"

#include <QList>
#include <QString>

#include <optional>

namespace trellisport::platform {

/// What registrations with push services live on.
struct PushRegistration {
    struct Place {
        QString distributor; ///< the push service's bus name
        QString token;       ///< what it calls us; empty: none yet

        friend bool operator==(const Place &, const Place &) = default;
    };

    /// The push service to use, and after it the one that stands in while that is away.
    QList<Place> places;
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
