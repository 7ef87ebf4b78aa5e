#pragma once

#include <QAccessible>
#include <QObject>
#include <QQuickWindow>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace trellisport::test {

/// One thing that is told to whoever can't see the screen, as it was when it was looked at.
struct AccessibleNode {
    const QObject *object;
    QAccessible::Role role;
    QAccessible::State state;
    QString name;
    QString description;
    QStringList actions;
    int depth;
};

/// All that is shown of a window, from the top down, in the order in which it is told.
[[nodiscard]] std::vector<AccessibleNode> accessibleTree(QQuickWindow &window);

/// What is seen in the window and not told, or told wrongly: a sentence each.
[[nodiscard]] std::vector<std::string> untold(QQuickWindow &window, QQuickItem *root);

/// The first node of a role and a name; a test failure and a null object when there is none.
[[nodiscard]] AccessibleNode accessibleNode(QQuickWindow &window, QAccessible::Role role,
                                            const QString &name);
/// Does what a node offers by this name.
void act(const AccessibleNode &node, const QString &action);

/// What is said aloud while this lives.
class HeardAnnouncements {
public:
    HeardAnnouncements();
    HeardAnnouncements(const HeardAnnouncements &) = delete;
    HeardAnnouncements &operator=(const HeardAnnouncements &) = delete;
    ~HeardAnnouncements();

    [[nodiscard]] static const QStringList &texts();
};

} // namespace trellisport::test
