#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <ostream>

/// So that a failed test shows texts readably.
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

namespace trellisport::test {

/// One QML type of the application in a window of its own, to be read and touched by a test. Scenes
/// that live at the same time end in the opposite order of their making.
class QmlScene {
public:
    /// Makes TrellisportManager.<module>.<type> and fills the window with it. Reports a test
    /// failure when it can't be made, and in the destructor when anything was warned about.
    QmlScene(const QString &module, const QString &type, const QVariantMap &properties = {},
             QSize size = {390, 844});
    /// Makes what a few lines of QML describe; they may use every module that the test links.
    explicit QmlScene(const QByteArray &qml, QSize size = {390, 844});
    QmlScene(const QByteArray &qml, const QVariantMap &properties, QSize size = {390, 844});
    QmlScene(const QmlScene &) = delete;
    QmlScene &operator=(const QmlScene &) = delete;
    ~QmlScene();

    [[nodiscard]] QQuickItem *root() const { return m_root.get(); }
    [[nodiscard]] QQuickWindow &window() { return m_window; }

    /// The item with this objectName below the given item (the root when none is given); a test
    /// failure and null when there is none.
    [[nodiscard]] QQuickItem *item(const QString &objectName, QQuickItem *below = nullptr) const;
    /// All items with this objectName, in drawing order.
    [[nodiscard]] QList<QQuickItem *> items(const QString &objectName,
                                            QQuickItem *below = nullptr) const;
    [[nodiscard]] bool has(const QString &objectName) const;
    /// The visible item that shows exactly this text.
    [[nodiscard]] QQuickItem *text(const QString &text, QQuickItem *below = nullptr) const;
    /// Every text that is seen, read from top to bottom and then along the line.
    [[nodiscard]] QStringList texts(QQuickItem *below = nullptr) const;

    /// Presses and releases at the item's centre.
    void tap(QQuickItem *item);
    /// Drags a finger from one place to another, in points, without lifting it.
    void drag(QPoint from, QPoint to);
    /// Lifts it.
    void lift(QPoint at);
    /// Draws the scene; what it looks like.
    [[nodiscard]] QImage picture();
    /// The colour drawn at a place in the window, in points.
    [[nodiscard]] QColor colorAt(QPointF place);

private:
    void show(QQmlComponent &component, const QVariantMap &properties, QSize size);

    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
    QStringList m_warnings;
    QStringList *m_outerWarnings = nullptr; ///< of the scene within whose life this one is made
};

/// The item's rectangle in the window.
[[nodiscard]] QRectF sceneRect(const QQuickItem *item);
[[nodiscard]] QColor colorOf(const QQuickItem *item);
[[nodiscard]] QFont fontOf(const QQuickItem *item);
[[nodiscard]] QString textOf(const QQuickItem *item);

/// Runs the event loop until the condition holds; false after ten seconds.
[[nodiscard]] bool eventually(const std::function<bool()> &condition);

} // namespace trellisport::test
