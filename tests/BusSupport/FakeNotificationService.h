#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace trellisport::test {

/// A desktop's notification service that a test plays.
class FakeNotificationService : public QObject {
    Q_OBJECT
public:
    struct Shown {
        quint32 id;
        QString applicationName;
        QString icon;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int expiry;
    };

    explicit FakeNotificationService(const QDBusConnection &bus);
    FakeNotificationService(const FakeNotificationService &) = delete;
    FakeNotificationService &operator=(const FakeNotificationService &) = delete;
    ~FakeNotificationService() override;

    void appear();
    void vanish();
    /// Its whole connection ends, with calls unanswered. It does not come again.
    void die();
    /// The user taps; with a token when the service has some to give.
    void tap(quint32 id, const QString &token = {}, const QString &key = QStringLiteral("default"));
    void dismiss(quint32 id);

    QStringList capabilities{QStringLiteral("actions"), QStringLiteral("body")};
    /// Answers that many calls of Notify with an error.
    int refusals = 0;
    QString refusal =
        QStringLiteral("org.freedesktop.Notifications.Error.ExcessNotificationGeneration");
    /// Takes calls of Notify and keeps the answers back until answerHeld().
    bool holdsAnswers = false;
    void answerHeld();
    [[nodiscard]] std::size_t held() const { return m_held.size(); }

    [[nodiscard]] const std::vector<Shown> &shown() const { return m_shown; }
    [[nodiscard]] const std::vector<quint32> &closed() const { return m_closed; }
    /// How often it was asked what it can.
    [[nodiscard]] int questions() const { return m_questions; }

private:
    friend class FakeNotificationInterface;

    QDBusConnection m_bus;
    std::vector<std::function<void()>> m_held;
    std::vector<Shown> m_shown;
    std::vector<quint32> m_closed;
    int m_questions = 0;
    class FakeNotificationInterface *m_interface;
};

class FakeNotificationInterface : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    explicit FakeNotificationInterface(FakeNotificationService *service)
        : QDBusAbstractAdaptor(service)
        , m_service(*service)
    {
    }

public Q_SLOTS:
    QStringList GetCapabilities();
    quint32 Notify(const QString &applicationName, quint32 replaces, const QString &icon,
                   const QString &summary, const QString &body, const QStringList &actions,
                   const QVariantMap &hints, int expiry, const QDBusMessage &call);
    void CloseNotification(quint32 id);

Q_SIGNALS:
    void ActionInvoked(quint32 id, const QString &key);
    void NotificationClosed(quint32 id, quint32 reason);
    void ActivationToken(quint32 id, const QString &token);

private:
    FakeNotificationService &m_service;
};

} // namespace trellisport::test
