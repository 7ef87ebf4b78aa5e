#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace trellisport {

/// The strips along the window's edges, in points, that a notch, a home indicator or rounded
/// corners take: backgrounds reach under them, content stays out of them. The root tabs keep clear
/// of the one below, so that screens above them need not. Main thread only.
class SafeArea : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(double top MEMBER m_top NOTIFY changed FINAL)
    Q_PROPERTY(double bottom MEMBER m_bottom NOTIFY changed FINAL)
    Q_PROPERTY(double left MEMBER m_left NOTIFY changed FINAL)
    Q_PROPERTY(double right MEMBER m_right NOTIFY changed FINAL)
public:
    /// Has what the platform says, and follows it.
    explicit SafeArea(QObject *parent = nullptr);

Q_SIGNALS:
    void changed();

private:
    void follow();

    double m_top = 0;
    double m_bottom = 0;
    double m_left = 0;
    double m_right = 0;
    std::shared_ptr<void> m_observation;
};

} // namespace trellisport
