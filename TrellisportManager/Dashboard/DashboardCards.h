#pragma once

#include "ServiceAccess/Records.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// What one statistic tile shows.
struct StatCardData {
    Q_GADGET
    QML_VALUE_TYPE(statCardData)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QColor color MEMBER color)
public:
    QString value;
    QString label;
    QColor color;
};

/// What one money tile shows; amount is the finished text.
struct RevenueCardData {
    Q_GADGET
    QML_VALUE_TYPE(revenueCardData)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString amount MEMBER amount)
    Q_PROPERTY(QColor color MEMBER color)
public:
    QString title;
    QString amount;
    QColor color;
};

/// The six tiles, row by row.
[[nodiscard]] QList<StatCardData> statCards(const DashboardData &data);
/// The two money tiles.
[[nodiscard]] QList<RevenueCardData> revenueCards(const DashboardData &data);

} // namespace trellisport
