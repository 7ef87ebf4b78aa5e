#pragma once

#include "Platform/TextRules.h"
#include "ServiceAccess/Records.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// What the row of one project shows.
struct ProjectRowData {
    Q_GADGET
    QML_VALUE_TYPE(projectRowData)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(bool hasRefNumber MEMBER hasRefNumber)
    Q_PROPERTY(QString refNumber MEMBER refNumber)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(QString amount MEMBER amount)
    Q_PROPERTY(QString owner MEMBER owner)
    Q_PROPERTY(QString marketplaceNumber MEMBER marketplaceNumber)
public:
    QString id;
    bool hasRefNumber = false;
    QString refNumber;
    QString title;
    QString status;            ///< "unknown" when the project has none
    QString amount;            ///< finished; empty when there is none
    QString owner;             ///< empty when there is none
    QString marketplaceNumber; ///< finished; FL#0 when there is none
};

/// The row of a project. Its texts are labels, shortened when no row could show them whole.
[[nodiscard]] ProjectRowData projectRowData(const Project &project,
                                            const platform::TextRules &rules);

} // namespace trellisport
