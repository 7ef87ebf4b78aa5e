import QtQuick
import TrellisportManager.Presentation

// Pulling a scroll area down past its top asks for a reload; the spinner follows the finger, and
// the content rests below it until the reload has ended.
Item {
    id: root

    required property Flickable flickable
    // The distance from the scroll area's top edge at which the content starts.
    required property real contentTop
    property bool enabled: true
    // Set by the owner while the reload it was asked for is under way.
    property bool refreshing: false
    signal triggered

    readonly property real pull: Math.max(0, -flickable.verticalOvershoot)
    // What the resting content leaves free for the spinner; the owner adds it to the top margin.
    property real restHeight: refreshing ? Metrics.refreshRestHeight : 0
    property bool armed: true

    y: contentTop
    width: flickable.width
    height: Math.max(pull + restHeight, 0)
    clip: true
    visible: enabled && height > 1

    Behavior on restHeight {
        NumberAnimation { duration: 250; easing.type: Easing.OutCubic }
    }
    onPullChanged: {
        if (!root.enabled || !root.flickable.dragging)
            return;
        if (root.armed && !root.refreshing && root.pull >= Metrics.refreshThreshold) {
            root.armed = false;
            root.triggered();
        }
    }
    Connections {
        function onDraggingChanged(): void {
            if (root.flickable.dragging)
                root.armed = true;
        }

        target: root.flickable
    }

    Spinner {
        objectName: "refreshSpinner"
        anchors.horizontalCenter: parent.horizontalCenter
        y: (root.height - height) / 2
        running: root.refreshing
        progress: root.refreshing ? 1 : root.pull / Metrics.refreshThreshold
    }
}
