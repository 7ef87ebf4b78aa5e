#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// What one filter chip shows.
struct FilterChipData {
    Q_GADGET
    QML_VALUE_TYPE(filterChipData)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(bool isSelected MEMBER isSelected)
public:
    QString label;
    bool isSelected = false;

    friend bool operator==(const FilterChipData &, const FilterChipData &) = default;
};

} // namespace trellisport
