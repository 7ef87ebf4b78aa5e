#pragma once

#include "Platform/LinkOpener.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// Opens addresses outside the application, in the system's browser. Main thread only.
class LinkController : public QObject {
    Q_OBJECT
    QML_ELEMENT
public:
    LinkController();
    /// opener must outlive the object.
    explicit LinkController(platform::LinkOpener &opener, QObject *parent = nullptr);

    /// Hands an absolute URL to the system. False when no program for it was found.
    Q_INVOKABLE bool open(const QString &url);

private:
    platform::LinkOpener &m_opener;
};

} // namespace trellisport
