#include "Live/LiveWindow.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTextStream>

#include <chrono>

namespace trellisport::live {

LiveWindow::LiveWindow(LiveSources &sources, NotificationManager &notifications)
    : m_sources(sources)
    , m_content(notifications)
{
    // Editors save in many ways; to look is simpler than to be told of each.
    connect(&m_timer, &QTimer::timeout, this, &LiveWindow::lookAtSources);
    m_timer.start(std::chrono::milliseconds(200));
    lookAtSources();
}

void LiveWindow::lookAtSources()
{
    const QString state = m_sources.state();
    if (state != m_shown) {
        m_shown = state;
        show();
    }
}

void LiveWindow::show()
{
    QElapsedTimer timer;
    timer.start();
    if (m_window) {
        // Its end is not the user's wish.
        m_window->disconnect(this);
    }
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->addUrlInterceptor(&m_sources);
    m_engine->setInitialProperties({{QStringLiteral("content"), QVariant::fromValue(&m_content)}});
    m_engine->addImportPath(QStringLiteral(":/qt/qml"));
    m_engine->load(QUrl(QStringLiteral("qrc:/qt/qml/TrellisportManager/Shell/AppWindow.qml")));
    const auto roots = m_engine->rootObjects();
    m_window = roots.isEmpty() ? nullptr : qobject_cast<QWindow *>(roots.first());
    if (m_window) {
        connect(m_window, &QWindow::visibleChanged, this, [](bool isVisible) {
            if (!isVisible) {
                QGuiApplication::quit();
            }
        });
    }
    QTextStream(stdout) << (m_window ? "shown" : "can't be shown") << " after " << timer.elapsed()
                        << " ms" << Qt::endl;
}

} // namespace trellisport::live
