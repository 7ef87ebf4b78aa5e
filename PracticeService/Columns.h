#pragma once

#include "ServiceAccess/Records.h"

#include <QSqlQuery>
#include <QVariant>

namespace trellisport::practice {

/// Reading a row's columns as the records want them; NULL is absence.
inline std::string textAt(const QSqlQuery &row, int column)
{
    return row.value(column).toString().toStdString();
}

inline OptionalText optionalTextAt(const QSqlQuery &row, int column)
{
    const QVariant value = row.value(column);
    return value.isNull() ? OptionalText() : OptionalText(value.toString().toStdString());
}

inline OptionalInteger optionalIntegerAt(const QSqlQuery &row, int column)
{
    const QVariant value = row.value(column);
    return value.isNull() ? OptionalInteger() : OptionalInteger(value.toLongLong());
}

inline OptionalNumber optionalNumberAt(const QSqlQuery &row, int column)
{
    const QVariant value = row.value(column);
    return value.isNull() ? OptionalNumber() : OptionalNumber(value.toDouble());
}

} // namespace trellisport::practice
