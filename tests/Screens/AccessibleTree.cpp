#include "AccessibleTree.h"

#include "Geometry.h"
#include "QmlSupport/QmlScene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace trellisport::test {

namespace {

QStringList heard;

void hear(QAccessibleEvent *event)
{
    QAccessibleInterface *interface = event->accessibleInterface();
    if (event->type() == QAccessible::ObjectShow && interface != nullptr &&
        interface->role() == QAccessible::Notification) {
        heard << interface->text(QAccessible::Name);
    }
}

void collect(QAccessibleInterface *interface, int depth, std::vector<AccessibleNode> &nodes)
{
    if (interface == nullptr || !interface->isValid() || interface->state().invisible) {
        return;
    }
    QAccessibleActionInterface *actions = interface->actionInterface();
    nodes.push_back({interface->object(), interface->role(), interface->state(),
                     interface->text(QAccessible::Name), interface->text(QAccessible::Description),
                     actions == nullptr ? QStringList() : actions->actionNames(), depth});
    for (int child = 0; child < interface->childCount(); ++child) {
        collect(interface->child(child), depth + 1, nodes);
    }
}

bool isPressable(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::Button:
    case QAccessible::PageTab:
    case QAccessible::CheckBox:
    case QAccessible::Link:
        return true;
    default:
        return false;
    }
}

bool offersPress(const AccessibleNode &node)
{
    return node.actions.contains(QAccessibleActionInterface::pressAction()) ||
           node.actions.contains(QAccessibleActionInterface::toggleAction());
}

/// Whether a node's words hold those of a text that stands where the node is.
bool tells(const AccessibleNode &node, const QQuickItem *text)
{
    const auto *item = qobject_cast<const QQuickItem *>(node.object);
    const QString words = textOf(text);
    return item != nullptr && sceneRect(item).contains(shownPart(text).center()) &&
           (node.name.contains(words) || node.description.contains(words));
}

std::optional<std::string> problemOf(const QQuickItem *control,
                                     const std::vector<AccessibleNode> &tree)
{
    const auto node = std::find_if(tree.begin(), tree.end(), [&](const AccessibleNode &each) {
        return each.object == control;
    });
    const std::string name = nameOf(control);
    if (node == tree.end()) {
        return name + " is operated by touch and not told";
    }
    if (node->name.trimmed().isEmpty()) {
        return name + " has no name";
    }
    if (isTextField(control)) {
        return node->role == QAccessible::EditableText
                   ? std::nullopt
                   : std::optional(name + " is a field, but its role does not say so");
    }
    if (!isPressable(node->role)) {
        return name + " can be pressed, but its role does not say so";
    }
    return offersPress(*node) ? std::nullopt : std::optional(name + " can't be pressed");
}

} // namespace

std::vector<AccessibleNode> accessibleTree(QQuickWindow &window)
{
    std::vector<AccessibleNode> nodes;
    collect(QAccessible::queryAccessibleInterface(&window), 0, nodes);
    return nodes;
}

std::vector<std::string> untold(QQuickWindow &window, QQuickItem *root)
{
    const std::vector<AccessibleNode> tree = accessibleTree(window);
    const SeenItems seen = seenItems(root);
    std::vector<std::string> problems;
    for (const QQuickItem *text : seen.texts) {
        const bool isTold = std::any_of(tree.begin(), tree.end(), [&](const AccessibleNode &node) {
            return tells(node, text);
        });
        if (!isTold && !shownPart(text).isEmpty()) {
            problems.push_back(nameOf(text) + " is seen and not told");
        }
    }
    for (const QQuickItem *control : seen.controls) {
        if (!shownPart(control).isEmpty()) {
            if (auto problem = problemOf(control, tree)) {
                problems.push_back(std::move(*problem));
            }
        }
    }
    return problems;
}

AccessibleNode accessibleNode(QQuickWindow &window, QAccessible::Role role, const QString &name)
{
    for (const AccessibleNode &node : accessibleTree(window)) {
        if (node.role == role && node.name == name) {
            return node;
        }
    }
    ADD_FAILURE() << "nothing of role " << role << " is called " << name.toStdString();
    return {nullptr, role, {}, name, {}, {}, 0};
}

void act(const AccessibleNode &node, const QString &action)
{
    ASSERT_TRUE(node.actions.contains(action))
        << node.name.toStdString() << " offers " << node.actions.join(u' ').toStdString();
    QAccessible::queryAccessibleInterface(const_cast<QObject *>(node.object))
        ->actionInterface()
        ->doAction(action);
}

HeardAnnouncements::HeardAnnouncements()
{
    heard.clear();
    QAccessible::installUpdateHandler(hear);
}

HeardAnnouncements::~HeardAnnouncements()
{
    QAccessible::installUpdateHandler(nullptr);
}

const QStringList &HeardAnnouncements::texts()
{
    return heard;
}

} // namespace trellisport::test
