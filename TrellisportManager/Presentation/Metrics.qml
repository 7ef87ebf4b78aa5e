pragma Singleton
import QtQuick

// Lengths that the screens share, in points.
QtObject {
    readonly property real inset: 16
    readonly property real spacing: 8
    readonly property real touchTarget: 44
    readonly property real titleBarHeight: 44
    readonly property real largeTitleHeight: 52
    readonly property real tabBarHeight: 49
    // Wide windows keep their content in a column of this width at most.
    readonly property real readableWidth: 700
    readonly property real refreshThreshold: 80
    readonly property real refreshRestHeight: 60
}
