#include "Platform/Web/PageAccessibility.h"

#include <QAccessible>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickWindow>

#include <emscripten/em_macros.h>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <chrono>

// Script/Accessibility.js
extern "C" void trellisport_speak_later();
extern "C" void trellisport_speak(const char *json, std::size_t size);

namespace trellisport::platform {

namespace {

using namespace std::chrono_literals;

/// After how long without a change the screen counts as being at rest.
constexpr auto rest = 120ms;
/// A screen that never rests, because something turns on it, is told this often.
constexpr auto limit = 1000ms;

PageAccessibility *current = nullptr;

QString role(QAccessibleInterface &item)
{
    switch (item.role()) {
    case QAccessible::StaticText:
        return QStringLiteral("text");
    case QAccessible::Button:
        return QStringLiteral("button");
    case QAccessible::CheckBox:
        return QStringLiteral("checkbox");
    case QAccessible::PageTab:
        return QStringLiteral("tab");
    case QAccessible::PageTabList:
        return QStringLiteral("tablist");
    case QAccessible::EditableText:
        return QStringLiteral("textbox");
    case QAccessible::Heading:
        return QStringLiteral("heading");
    case QAccessible::Link:
        return QStringLiteral("link");
    case QAccessible::List:
        return QStringLiteral("list");
    case QAccessible::ListItem:
        return QStringLiteral("listitem");
    case QAccessible::ProgressBar:
        return QStringLiteral("progressbar");
    case QAccessible::Graphic:
        return QStringLiteral("img");
    case QAccessible::Notification:
        return QStringLiteral("status");
    case QAccessible::AlertMessage:
        return QStringLiteral("alert");
    case QAccessible::PopupMenu:
        return QStringLiteral("menu");
    case QAccessible::MenuItem:
        return QStringLiteral("menuitem");
    case QAccessible::Grouping:
        return QStringLiteral("group");
    default:
        return {};
    }
}

QString yesOrNo(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

/// What pressing it does; empty when nothing.
QString action(QAccessibleInterface &item)
{
    QString wanted = QAccessibleActionInterface::pressAction();
    if (item.role() == QAccessible::CheckBox) {
        wanted = QAccessibleActionInterface::toggleAction();
    } else if (item.role() == QAccessible::EditableText) {
        wanted = QAccessibleActionInterface::setFocusAction();
    }
    QAccessibleActionInterface *actions = item.actionInterface();
    return actions && actions->actionNames().contains(wanted) ? wanted : QString();
}

QString states(const QAccessible::State &state)
{
    QStringList names;
    const auto add = [&names](bool holds, const char *name) {
        if (holds) {
            names.append(QLatin1String(name));
        }
    };
    add(state.checked, "checked");
    add(state.selected, "selected");
    add(state.focused, "focused");
    add(state.offscreen, "offscreen");
    return names.join(QLatin1Char(' '));
}

void describeChildren(QAccessibleInterface &item, QPoint origin, QJsonArray &nodes);

QJsonObject describe(QAccessibleInterface &item, QPoint origin)
{
    const QAccessible::State state = item.state();
    const QRect place = item.rect().translated(-origin);
    QJsonObject node{{QStringLiteral("id"), static_cast<qint64>(QAccessible::uniqueId(&item))},
                     {QStringLiteral("role"), role(item)},
                     {QStringLiteral("name"), item.text(QAccessible::Name)},
                     {QStringLiteral("description"), item.text(QAccessible::Description)},
                     {QStringLiteral("action"), action(item)},
                     {QStringLiteral("states"), states(state)},
                     {QStringLiteral("x"), place.x()},
                     {QStringLiteral("y"), place.y()},
                     {QStringLiteral("width"), place.width()},
                     {QStringLiteral("height"), place.height()}};
    if (item.role() == QAccessible::EditableText) {
        node.insert(QStringLiteral("value"), item.text(QAccessible::Value));
        node.insert(QStringLiteral("multiline"), yesOrNo(state.multiLine));
    }
    if (item.role() == QAccessible::PageTab) {
        node.insert(QStringLiteral("selected"), yesOrNo(state.checked || state.selected));
    } else if (state.checkable) {
        node.insert(QStringLiteral("checked"), yesOrNo(state.checked));
    }
    if (state.disabled) {
        node.insert(QStringLiteral("disabled"), yesOrNo(true));
    }
    if (item.role() != QAccessible::EditableText) {
        QJsonArray children;
        describeChildren(item, origin, children);
        node.insert(QStringLiteral("children"), children);
    }
    return node;
}

void describeChildren(QAccessibleInterface &item, QPoint origin, QJsonArray &nodes)
{
    for (int index = 0; index < item.childCount(); ++index) {
        QAccessibleInterface *child = item.child(index);
        if (child && child->isValid() && !child->state().invisible) {
            nodes.append(describe(*child, origin));
            // In a page a field holds its text and nothing else; what it has stands behind it.
            if (child->role() == QAccessible::EditableText) {
                describeChildren(*child, origin, nodes);
            }
        }
    }
}

} // namespace

/// Somebody who can't see the screen pressed what was told under this name. A list may show
/// something else in its place by now, or nothing: then it is not what was meant.
extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_press(double id, const char *name)
{
    QAccessibleInterface *item = QAccessible::accessibleInterface(static_cast<QAccessible::Id>(id));
    if (!item || item->text(QAccessible::Name) != QString::fromUtf8(name)) {
        return;
    }
    const QString known = action(*item);
    if (!known.isEmpty()) {
        item->actionInterface()->doAction(known);
    }
}

PageAccessibility::PageAccessibility()
{
    current = this;
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    // Nothing is said at once: the toolkit's own elements are never made.
    QAccessible::installUpdateHandler([](QAccessibleEvent *) { current->changed(); });
    m_rest.setSingleShot(true);
    m_rest.setInterval(rest);
    connect(&m_rest, &QTimer::timeout, this, &PageAccessibility::tell);
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit);
    connect(&m_limit, &QTimer::timeout, this, &PageAccessibility::tell);
}

void PageAccessibility::show(QWindow &window)
{
    m_window = &window;
    // What scrolls is drawn elsewhere and changes in no other way.
    if (auto *scene = qobject_cast<QQuickWindow *>(&window)) {
        connect(scene, &QQuickWindow::frameSwapped, this, &PageAccessibility::changed);
    }
    changed();
}

void PageAccessibility::changed()
{
    if (!m_rest.isActive()) {
        trellisport_speak_later();
    }
    m_rest.start();
    if (!m_limit.isActive()) {
        m_limit.start();
    }
}

void PageAccessibility::tell()
{
    m_rest.stop();
    m_limit.stop();
    QAccessibleInterface *root =
        m_window ? QAccessible::queryAccessibleInterface(m_window) : nullptr;
    if (!root) {
        return;
    }
    QJsonObject screen{{QStringLiteral("root"), describe(*root, m_window->position())}};
    if (QAccessibleInterface *focus = root->focusChild()) {
        screen.insert(QStringLiteral("focus"),
                      QJsonObject{{QStringLiteral("name"), focus->text(QAccessible::Name)}});
    }
    const QByteArray json = QJsonDocument(screen).toJson(QJsonDocument::Compact);
    trellisport_speak(json.constData(), static_cast<std::size_t>(json.size()));
}

} // namespace trellisport::platform
