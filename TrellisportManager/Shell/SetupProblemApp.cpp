#include "Shell/SetupProblemApp.h"

#include "Shell/ContentViewModel.h"

#include <QWindow>

#include <utility>

namespace trellisport {

SetupProblemApp::SetupProblemApp(std::string problem)
    : m_problem(std::move(problem))
{
}

bool SetupProblemApp::showWindow()
{
    if (!m_engine) {
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_engine->setInitialProperties(
            {{QStringLiteral("problem"), QString::fromStdString(m_problem)},
             {QStringLiteral("hasFrame"), ContentViewModel::hasFrame()}});
        m_engine->addImportPath(QStringLiteral(":/qt/qml"));
        m_engine->load(
            QUrl(QStringLiteral("qrc:/qt/qml/TrellisportManager/Shell/ProblemWindow.qml")));
    }
    const auto roots = m_engine->rootObjects();
    auto *window = roots.isEmpty() ? nullptr : qobject_cast<QWindow *>(roots.first());
    if (!window) {
        closeWindow();
        return false;
    }
    window->show();
    window->raise();
    window->requestActivate();
    return true;
}

void SetupProblemApp::closeWindow()
{
    m_engine.reset();
}

} // namespace trellisport
