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
    // Lists: rounded groups of rows, each row's content inset.
    readonly property real groupRadius: 10
    readonly property real groupSpacing: 24
    readonly property real rowPadding: 11
    // Wide windows keep their content in a column of this width at most.
    readonly property real readableWidth: 700
    readonly property real refreshThreshold: 80
    readonly property real refreshRestHeight: 60
}
