#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// What a person who can't see the screen is told of what has changed on it. Announcer says it.
/// Main thread only.
class Announcements : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    using QObject::QObject;

    /// Says a text, where anybody listens; an empty one is nothing.
    Q_INVOKABLE void say(const QString &text);

Q_SIGNALS:
    void said(const QString &text);
};

} // namespace trellisport
