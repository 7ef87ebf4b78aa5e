#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <vector>

namespace trellisport::test {

/// A launcher that listens for badges.
class FakeLauncher : public QObject {
    Q_OBJECT
public:
    struct Update {
        QString uri;
        QVariantMap properties;
    };

    explicit FakeLauncher(QDBusConnection bus)
    {
        bus.connect({}, {}, QStringLiteral("com.canonical.Unity.LauncherEntry"),
                    QStringLiteral("Update"), this, SLOT(update(QString, QVariantMap)));
    }
    [[nodiscard]] const std::vector<Update> &updates() const { return m_updates; }

private Q_SLOTS:
    void update(const QString &uri, const QVariantMap &properties)
    {
        m_updates.push_back({uri, properties});
    }

private:
    std::vector<Update> m_updates;
};

} // namespace trellisport::test
