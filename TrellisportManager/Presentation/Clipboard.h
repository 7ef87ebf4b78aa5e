#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// The system's clipboard. Main thread only.
class Clipboard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    using QObject::QObject;

    /// Puts a text there, as plain text.
    Q_INVOKABLE static void copy(const QString &text);
};

} // namespace trellisport
