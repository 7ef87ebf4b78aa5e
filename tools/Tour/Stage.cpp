#include "Tour/Stage.h"

#include "ProjectDetail/ProjectDetailViewModel.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QTextStream>
#include <QTimer>

#include <cstdlib>

namespace trellisport::tour {

namespace {

constexpr int patienceMilliseconds = 20000;

[[noreturn]] void giveUp(const QString &sentence)
{
    QTextStream(stderr) << sentence << '\n';
    std::exit(1); // NOLINT(concurrency-mt-unsafe): nobody else ends the program
}

bool isSeen(const QQuickItem *item)
{
    for (const QQuickItem *at = item; at != nullptr; at = at->parentItem()) {
        if (!at->isVisible() || at->opacity() <= 0) {
            return false;
        }
    }
    return true;
}

QQuickItem *findSeen(QQuickItem *item, const std::function<bool(const QQuickItem *)> &wanted)
{
    if (!item->isVisible()) {
        return nullptr;
    }
    if (wanted(item) && isSeen(item)) {
        return item;
    }
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = findSeen(child, wanted)) {
            return found;
        }
    }
    return nullptr;
}

void spin(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

Stage::Stage(QSize size, const QDir &folder)
    : m_folder(folder)
{
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    m_window.resize(size);
    m_window.setColor(Qt::black);
    m_window.show();
}

void Stage::open()
{
    m_root.reset();
    QQmlComponent component(
        &m_engine, QUrl(QStringLiteral("qrc:/qt/qml/TrellisportManager/Shell/ContentView.qml")));
    m_content = std::make_unique<ContentViewModel>(NotificationManager::shared());
    m_root.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
        {{QStringLiteral("viewModel"), QVariant::fromValue(m_content.get())}})));
    if (!m_root) {
        giveUp(component.errorString());
    }
    m_root->setParentItem(m_window.contentItem());
    m_root->setSize(m_window.size());
}

QQuickItem *Stage::seen(const QString &objectName) const
{
    return findSeen(m_root.get(),
                    [&](const QQuickItem *item) { return item->objectName() == objectName; });
}

QQuickItem *Stage::find(const QString &objectName)
{
    QQuickItem *found = nullptr;
    await(qPrintable(objectName), [&] {
        found = seen(objectName);
        return found != nullptr;
    });
    return found;
}

void Stage::await(const char *what, const std::function<bool()> &condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > patienceMilliseconds) {
            giveUp(QStringLiteral("%1 did not come in %2 seconds.")
                       .arg(QString::fromUtf8(what))
                       .arg(patienceMilliseconds / 1000));
        }
        spin(5);
    }
}

void Stage::settle()
{
    await("the end of loading", [&] {
        return findSeen(m_root.get(), [](const QQuickItem *item) {
                   return item->inherits("trellisport::SpinnerImage");
               }) == nullptr;
    });
    rest();
}

void Stage::rest()
{
    // Animations last 350 ms at most.
    spin(450);
}

void Stage::showTab(int tab)
{
    m_content->setSelectedTab(tab);
}

void Stage::openProject(const QString &id)
{
    open();
    showTab(1);
    QQuickItem *projects = find(QStringLiteral("projectsView"));
    if (id.isEmpty() || !QMetaObject::invokeMethod(projects, "open", Q_ARG(QString, id))) {
        giveUp(QStringLiteral("There is no project to open."));
    }
}

void Stage::showWorkspaceTab(int tab)
{
    find(QStringLiteral("tabStrip"));
    auto *model =
        find(QStringLiteral("workspace"))->property("viewModel").value<ProjectDetailViewModel *>();
    model->setSelectedTab(tab);
}

void Stage::tap(const QString &objectName)
{
    const QQuickItem *item = find(objectName);
    const QPointF place = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, m_window.mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&m_window, &event);
    }
}

void Stage::type(const QString &objectName, const QString &text)
{
    QQuickItem *field = find(objectName);
    if (!field->isEnabled()) {
        giveUp(QStringLiteral("%1 takes no text.").arg(objectName));
    }
    field->forceActiveFocus(Qt::MouseFocusReason);
    QMetaObject::invokeMethod(field, "selectAll");
    QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, text);
    QCoreApplication::sendEvent(field, &event);
    spin(20);
}

void Stage::scroll(const QString &objectName, qreal distance)
{
    QQuickItem *area = find(objectName);
    area->setProperty("contentY", area->property("contentY").toReal() + distance);
    QMetaObject::invokeMethod(area, "returnToBounds");
    rest();
}

void Stage::draw(const QString &name)
{
    const QString file = m_folder.filePath(name + QStringLiteral(".png"));
    spin(20);
    if (!m_window.grabWindow().save(file)) {
        giveUp(QStringLiteral("%1 could not be written.").arg(file));
    }
    ++m_drawn;
}

} // namespace trellisport::tour
