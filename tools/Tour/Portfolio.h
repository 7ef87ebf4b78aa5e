#pragma once

#include "Tour/ServiceControl.h"

#include <QString>

#include <vector>

namespace trellisport::tour {

/// The practice service's projects, to choose those worth a picture from.
class Portfolio {
public:
    explicit Portfolio(const ServiceControl &service);

    /// The project of this status that has most to show in all tabs; empty when there is none.
    [[nodiscard]] QString richest(const QString &status) const;
    /// A project with a decision that waits for an answer; empty when there is none.
    [[nodiscard]] QString undecided() const;

private:
    struct Project {
        QString id;
        QString status;
    };

    const ServiceControl &m_service;
    std::vector<Project> m_projects;
};

} // namespace trellisport::tour
