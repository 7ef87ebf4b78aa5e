#pragma once

#include "ServiceAccess/Records.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace trellisport {

/// A loaded project as QML hands it on: the record itself is shared and read by C++ only.
struct ProjectRecord {
    Q_GADGET
    QML_VALUE_TYPE(projectRecord)
public:
    std::shared_ptr<const ProjectDetail> project; ///< null: none is loaded

    friend bool operator==(const ProjectRecord &, const ProjectRecord &) = default;
};

/// What the workspace's header shows of a project.
struct ProjectHeader {
    Q_GADGET
    QML_VALUE_TYPE(projectHeader)
    Q_PROPERTY(bool hasReference MEMBER hasReference)
    Q_PROPERTY(QString reference MEMBER reference)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(QString bidAmount MEMBER bidAmount)
    Q_PROPERTY(QString marketplaceNumber MEMBER marketplaceNumber)
    Q_PROPERTY(bool hasRepository MEMBER hasRepository)
public:
    bool hasReference = false;
    QString reference;
    QString status;
    QString bidAmount; ///< finished; empty when there is none
    QString marketplaceNumber;
    bool hasRepository = false;
};

} // namespace trellisport
