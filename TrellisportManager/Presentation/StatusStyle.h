#pragma once

#include "Platform/TextRules.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <string>
#include <string_view>

namespace trellisport {

/// The colour of a project's status word; gray for every word that is not in the table. Exact,
/// case-sensitive.
[[nodiscard]] QColor statusColor(std::string_view status);

/// A word of the service as a label: every "_" is a blank.
[[nodiscard]] std::string spacedWords(std::string_view word);

/// A status word as its badge shows it: "bid_placed" reads Bid Placed.
[[nodiscard]] std::string statusLabel(std::string_view status, const platform::TextRules &rules);

/// The same for QML.
class StatusStyle : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    StatusStyle();
    /// rules must outlive the object.
    explicit StatusStyle(const platform::TextRules &rules, QObject *parent = nullptr);

    [[nodiscard]] Q_INVOKABLE static QColor color(const QString &status);
    [[nodiscard]] Q_INVOKABLE QString label(const QString &status) const;

private:
    const platform::TextRules &m_rules;
};

} // namespace trellisport
