#pragma once

#include "Live/LiveSources.h"
#include "Shell/ContentViewModel.h"

#include <QObject>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QTimer>
#include <QWindow>

#include <memory>

namespace trellisport::live {

/// The console's window, made anew whenever its sources change. Of what it showed, the root tab
/// stays. After sources that can't be read there is no window until they can be. Main thread.
class LiveWindow : public QObject {
    Q_OBJECT
public:
    /// Both must outlive it.
    LiveWindow(LiveSources &sources, NotificationManager &notifications);

private:
    void lookAtSources();
    void show();

    LiveSources &m_sources;
    ContentViewModel m_content;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QPointer<QWindow> m_window;
    QTimer m_timer;
    QString m_shown;
};

} // namespace trellisport::live
