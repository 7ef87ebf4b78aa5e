pragma Singleton
import QtQuick
import TrellisportManager.Presentation

// Lengths that the screens share, in points.
QtObject {
    readonly property real inset: 16
    readonly property real spacing: 8
    readonly property real touchTarget: 44
    readonly property real titleBarHeight: 44
    // Bars grow with the user's text size: 52 and 49 at the usual one.
    readonly property real largeTitleHeight: 11 + Typography.lineHeight(Typography.LargeTitle, Typography.textScale)
    readonly property real tabBarHeight: 37 + Typography.systemLineHeight(10, Typography.textScale)
    // Whether text is larger than usual: what then no longer fits beside each other stands below
    // each other. At the usual size and below, everything stands as it was designed.
    readonly property bool largeText: Typography.textScale > 1
    // Lists: rounded groups of rows, each row's content inset.
    readonly property real groupRadius: 10
    readonly property real groupSpacing: 24
    readonly property real rowPadding: 11
    // Windows lower than this, as above a keyboard in landscape, have no room for bars.
    readonly property real lowHeight: 200
    // Wide windows keep their content in a column of this width at most.
    readonly property real readableWidth: 700
    readonly property real refreshThreshold: 80
    readonly property real refreshRestHeight: 60

    // Symbols beside text grow with it, by half at most: the room is the words'.
    function symbolSize(usual: real): real {
        return Math.round(usual * Math.max(1, Math.min(1.5, Typography.textScale)));
    }
    // Where something of a size stands in the middle of a room: as an anchor would put it, on whole
    // points where the lengths are.
    function centered(room: real, size: real): real {
        return middle(room) - middle(size);
    }
    function middle(length: real): real {
        return (Math.floor(length) % 2 === 1 ? length + 1 : length) / 2;
    }
}
