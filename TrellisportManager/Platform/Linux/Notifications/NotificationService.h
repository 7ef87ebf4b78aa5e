#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

namespace trellisport::platform {

/// One notification on the screen.
struct DesktopNotification {
    QString summary;
    QString body; ///< plain text
    bool isUrgent = false;
    bool hasSound = true;
    bool stays = false; ///< until somebody closes it
};

/// The desktop's notification service on the session bus, whichever it is. One thread, which runs
/// an event loop; the answers come later, or never once this is gone.
class NotificationService : public QObject {
    Q_OBJECT
public:
    /// applicationId: the desktop file's name without its ending.
    NotificationService(const QDBusConnection &bus, QString applicationName, QString applicationId,
                        QObject *parent = nullptr);

    /// Tells whether there is one that answers.
    void ask(std::function<void(bool answers)> answer);
    /// Shows it and gives its id there; nothing when it was not shown.
    void show(const DesktopNotification &notification,
              std::function<void(std::optional<quint32> id)> answer);
    void close(quint32 id);
    /// Whether there was one when it was last heard of.
    [[nodiscard]] bool isThere() const { return m_isThere; }

Q_SIGNALS:
    /// The user opened one. token, when not empty, lets a window come to the front.
    void opened(quint32 id, const QString &token);
    /// It is not on the screen any more and can't be opened.
    void closed(quint32 id);
    /// The service has gone, and all that it showed with it.
    void vanished();
    /// One has come, the first or another.
    void appeared();

private Q_SLOTS:
    void activationToken(quint32 id, const QString &token);
    void actionInvoked(quint32 id, const QString &key);
    void notificationClosed(quint32 id, quint32 reason);

private:
    void withCapabilities(std::function<void(const std::optional<QStringList> &)> next);
    void noteWhether(const QDBusError &error);
    void send(const DesktopNotification &notification, const QStringList &capabilities,
              int triesLeft, const std::function<void(std::optional<quint32> id)> &answer);
    [[nodiscard]] QDBusMessage method(const QString &name) const;
    [[nodiscard]] QVariantMap hints(const DesktopNotification &notification) const;
    void listen(const QString &signal, const char *slot);

    QDBusConnection m_bus;
    QString m_applicationName;
    QString m_applicationId;
    QDBusServiceWatcher m_watcher;
    bool m_isThere = false;
    std::optional<QStringList> m_capabilities; ///< of the service that runs now; absent: not asked
    /// The last activation token; it comes just before the action that it is for.
    std::pair<quint32, QString> m_token;
};

} // namespace trellisport::platform
