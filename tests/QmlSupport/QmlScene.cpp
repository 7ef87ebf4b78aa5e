#include "QmlSupport/QmlScene.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMutex>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace trellisport::test {

namespace {

/// Where warnings go: to the scene that was made last. Scenes end in the opposite order.
QStringList *currentWarnings = nullptr;
QtMessageHandler formerHandler = nullptr;

void collectWarnings(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // The offscreen platform says this of every window; it is not about our scenes.
    const bool platformTalk = message.contains(QLatin1String("This plugin does not support")) ||
                              message.contains(QLatin1String("propagateSizeHints"));
    if (type != QtDebugMsg && type != QtInfoMsg && !platformTalk && currentWarnings != nullptr) {
        *currentWarnings << message;
    }
    formerHandler(type, context, message);
}

void visit(QQuickItem *item, const std::function<void(QQuickItem *)> &seen)
{
    seen(item);
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
    for (QQuickItem *child : children) {
        visit(child, seen);
    }
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

bool isText(const QQuickItem *item)
{
    return item->inherits("QQuickText") || item->inherits("QQuickTextInput") ||
           item->inherits("QQuickTextEdit");
}

} // namespace

QmlScene::QmlScene(const QString &module, const QString &type, const QVariantMap &properties,
                   QSize size)
{
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    QQmlComponent component(
        &m_engine,
        QUrl(QStringLiteral("qrc:/qt/qml/TrellisportManager/%1/%2.qml").arg(module, type)));
    show(component, properties, size);
}

QmlScene::QmlScene(const QByteArray &qml, QSize size)
    : QmlScene(qml, {}, size)
{
}

QmlScene::QmlScene(const QByteArray &qml, const QVariantMap &properties, QSize size)
{
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    QQmlComponent component(&m_engine);
    component.setData(qml, QUrl(QStringLiteral("qrc:/test.qml")));
    show(component, properties, size);
}

void QmlScene::show(QQmlComponent &component, const QVariantMap &properties, QSize size)
{
    m_outerWarnings = std::exchange(currentWarnings, &m_warnings);
    if (m_outerWarnings == nullptr) {
        formerHandler = qInstallMessageHandler(collectWarnings);
    }
    m_window.setColor(Qt::black);
    m_window.resize(size);
    std::unique_ptr<QObject> made(component.createWithInitialProperties(properties));
    m_root.reset(qobject_cast<QQuickItem *>(made.release()));
    if (!m_root) {
        ADD_FAILURE() << "could not be made: " << component.errorString().toStdString();
        return;
    }
    m_root->setParentItem(m_window.contentItem());
    m_root->setSize(QSizeF(size));
    QObject::connect(&m_window, &QWindow::widthChanged, m_root.get(),
                     [this](int width) { m_root->setWidth(width); });
    QObject::connect(&m_window, &QWindow::heightChanged, m_root.get(),
                     [this](int height) { m_root->setHeight(height); });
    m_window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
}

QmlScene::~QmlScene()
{
    m_root.reset();
    currentWarnings = m_outerWarnings;
    if (m_outerWarnings == nullptr) {
        qInstallMessageHandler(formerHandler);
    }
    EXPECT_TRUE(m_warnings.isEmpty())
        << "warned: " << m_warnings.join(QLatin1Char('\n')).toStdString();
}

QList<QQuickItem *> QmlScene::items(const QString &objectName, QQuickItem *below) const
{
    QList<QQuickItem *> found;
    visit(below == nullptr ? m_root.get() : below, [&](QQuickItem *item) {
        if (item->objectName() == objectName) {
            found << item;
        }
    });
    return found;
}

QQuickItem *QmlScene::item(const QString &objectName, QQuickItem *below) const
{
    const QList<QQuickItem *> found = items(objectName, below);
    if (found.isEmpty()) {
        ADD_FAILURE() << "no item named " << objectName.toStdString();
        return nullptr;
    }
    return found.first();
}

bool QmlScene::has(const QString &objectName) const
{
    const QList<QQuickItem *> found = items(objectName);
    return std::any_of(found.begin(), found.end(), isSeen);
}

QQuickItem *QmlScene::text(const QString &text, QQuickItem *below) const
{
    QQuickItem *found = nullptr;
    visit(below == nullptr ? m_root.get() : below, [&](QQuickItem *item) {
        if (found == nullptr && isText(item) && isSeen(item) && textOf(item) == text) {
            found = item;
        }
    });
    if (found == nullptr) {
        ADD_FAILURE() << "no text reads " << text.toStdString() << "; there are:\n"
                      << texts().join(QLatin1Char('\n')).toStdString();
    }
    return found;
}

QStringList QmlScene::texts(QQuickItem *below) const
{
    QList<QQuickItem *> found;
    visit(below == nullptr ? m_root.get() : below, [&](QQuickItem *item) {
        if (isText(item) && isSeen(item) && !textOf(item).isEmpty()) {
            found << item;
        }
    });
    std::stable_sort(found.begin(), found.end(), [](const QQuickItem *a, const QQuickItem *b) {
        const QRectF left = sceneRect(a);
        const QRectF right = sceneRect(b);
        const bool sameLine = std::abs(left.center().y() - right.center().y()) < 4;
        return sameLine ? left.x() < right.x() : left.center().y() < right.center().y();
    });
    QStringList texts;
    for (const QQuickItem *item : found) {
        texts << textOf(item);
    }
    return texts;
}

void QmlScene::tap(QQuickItem *item)
{
    ASSERT_NE(item, nullptr);
    QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier,
                      sceneRect(item).center().toPoint());
}

void QmlScene::drag(QPoint from, QPoint to)
{
    QTest::mousePress(&m_window, Qt::LeftButton, Qt::NoModifier, from);
    constexpr int steps = 20;
    for (int step = 1; step <= steps; ++step) {
        QTest::mouseMove(&m_window, from + (to - from) * step / steps);
    }
}

void QmlScene::lift(QPoint at)
{
    QTest::mouseRelease(&m_window, Qt::LeftButton, Qt::NoModifier, at);
}

QImage QmlScene::picture()
{
    return m_window.grabWindow();
}

QColor QmlScene::colorAt(QPointF place)
{
    const QImage image = picture();
    return image.pixelColor((place * image.devicePixelRatio()).toPoint());
}

QRectF sceneRect(const QQuickItem *item)
{
    return item->mapRectToScene(QRectF(QPointF(), item->size()));
}

QColor colorOf(const QQuickItem *item)
{
    return item->property("color").value<QColor>();
}

QFont fontOf(const QQuickItem *item)
{
    return item->property("font").value<QFont>();
}

QString textOf(const QQuickItem *item)
{
    return item->property("text").toString();
}

bool eventually(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, 10000);
}

} // namespace trellisport::test
