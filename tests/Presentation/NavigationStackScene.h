#pragma once

#include "QmlSupport/QmlScene.h"

#include <QByteArray>
#include <QMetaObject>
#include <QString>

namespace trellisport::test {

/// A stack whose root page counts how often it appears and goes.
inline const QByteArray stack = R"(
import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    property int appearances: 0
    property int disappearances: 0
    property int presses: 0
    property string made
    property alias depth: stack.depth
    property alias moving: stack.moving

    function push(name: string): void {
        stack.push(page, { name: name });
    }
    function pop(): void {
        stack.pop();
    }

    NavigationStack {
        id: stack

        objectName: "stack"
        anchors.fill: parent
        rootPage: Rectangle {
            objectName: "rootPage"
            width: stack.width
            height: stack.height
            onVisibleChanged: visible ? root.appearances++ : root.disappearances++

            PressableControl {
                objectName: "rootButton"
                y: 100
                width: 390
                height: 44
                onClicked: root.presses++
            }
        }
    }
    Component {
        id: page

        Rectangle {
            property string name

            objectName: name
            color: "navy"

            Flickable {
                objectName: "sideways"
                anchors.fill: parent
                contentWidth: 2000
                contentHeight: height
            }
            PressableControl {
                objectName: "inner"
                y: 200
                width: 390
                height: 44
            }
            Component.onCompleted: root.made += name
        }
    }
}
)";

inline void push(QmlScene &scene, const char *name)
{
    QMetaObject::invokeMethod(scene.root(), "push", Q_ARG(QString, QString::fromLatin1(name)));
}

inline void pop(QmlScene &scene)
{
    QMetaObject::invokeMethod(scene.root(), "pop");
}

inline bool settled(QmlScene &scene)
{
    return eventually([&] { return !scene.root()->property("moving").toBool(); });
}

inline int count(const QmlScene &scene, const char *property)
{
    return scene.root()->property(property).toInt();
}

inline double left(const QmlScene &scene, const char *page)
{
    return sceneRect(scene.item(QString::fromLatin1(page))).x();
}

} // namespace trellisport::test
