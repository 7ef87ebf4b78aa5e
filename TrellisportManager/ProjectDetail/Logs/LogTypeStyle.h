#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <string_view>

namespace trellisport {

/// The colour of a log entry's type; gray for every word that is not in the table. Exact,
/// case-sensitive.
[[nodiscard]] QColor logTypeColor(std::string_view type);

/// What a log entry's badge shows, for QML.
class LogTypeStyle : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    using QObject::QObject;

    [[nodiscard]] Q_INVOKABLE static QColor color(const QString &type);
    /// The type with blanks for its "_".
    [[nodiscard]] Q_INVOKABLE static QString label(const QString &type);
};

} // namespace trellisport
