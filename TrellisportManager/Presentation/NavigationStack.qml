pragma ComponentBehavior: Bound

import QtQuick

// Pages over one root page. A pushed page slides over from the trailing edge while the page below
// moves back; a swipe from the leading edge follows the finger back, and the keys and buttons that
// go back everywhere do so here. A covered page is invisible, so that a screen that loads when it
// appears does so once each time it is uncovered.
Item {
    id: root

    required property Item rootPage
    readonly property int depth: d.frames.length
    readonly property Item currentPage: depth > 0 ? d.frames[depth - 1].page : rootPage
    // Whether a page is on its way, by itself or under the finger.
    readonly property alias moving: d.moving

    // Makes a page of the component and shows it; null when it could not be made. When the page
    // has a signal backRequested, it leads back.
    function push(component: Component, properties: var): Item {
        slide.complete();
        const frame = frameComponent.createObject(holder, {
            level: root.depth + 1
        });
        frame.page = component.createObject(frame, properties);
        if (!frame.page) {
            console.warn("a page could not be made:", component.errorString());
            frame.destroy();
            return null;
        }
        frame.page.anchors.fill = frame;
        frame.page.backRequested?.connect(root.pop);
        d.moving = true;
        d.openness = 1;
        d.frames = [...d.frames, frame];
        frame.forceActiveFocus(Qt.OtherFocusReason);
        d.slideTo(0);
        return frame.page;
    }
    // Goes back to the page below; nothing at the root page.
    function pop(): void {
        d.goBack(Qt.OtherFocusReason);
    }

    clip: true

    component Frame: FocusScope {
        required property int level
        property Item page

        width: root.width
        height: root.height
        x: level === root.depth ? d.openness * width : level === root.depth - 1 ? (d.openness - 1) * width / 3 : 0
        visible: level >= d.lowestSeen
        z: level
    }
    Component {
        id: frameComponent

        Frame {}
    }
    QtObject {
        id: d

        // Frames, the lowest first.
        property var frames: []
        // How far the top page has been moved out: 0 in its place, 1 beyond the trailing edge.
        property real openness: 0
        property bool moving: false
        // The lowest level whose page is seen. It alone decides, so that no page appears or goes
        // for a moment between two changes.
        property int lowestSeen: 0
        property bool leaving: false
        property int focusReason: Qt.OtherFocusReason

        function slideTo(target: real): void {
            slide.duration = 350 * Math.abs(target - d.openness);
            slide.to = target;
            slide.restart();
        }
        function goBack(reason: int): void {
            if (d.leaving)
                slide.complete();
            if (root.depth === 0)
                return;
            d.focusReason = reason;
            d.moving = true;
            d.lowestSeen = root.depth - 1;
            d.leaving = true;
            d.slideTo(1);
        }
        function finish(): void {
            if (d.leaving) {
                const gone = d.frames[root.depth - 1];
                d.frames = d.frames.slice(0, -1);
                gone.visible = false;
                gone.destroy();
                (root.depth > 0 ? d.frames[root.depth - 1] : rootFrame).forceActiveFocus(d.focusReason);
            }
            d.lowestSeen = root.depth;
            d.openness = 0;
            d.leaving = false;
            d.moving = false;
        }
    }
    NumberAnimation {
        id: slide

        target: d
        property: "openness"
        easing.type: Easing.OutCubic
        onFinished: d.finish()
    }
    Item {
        id: holder

        anchors.fill: parent

        Frame {
            id: rootFrame

            level: 0
            page: root.rootPage
            children: [root.rootPage]
        }
        // Between the two pages while one moves.
        Rectangle {
            anchors.fill: parent
            z: root.depth - 0.5
            visible: root.moving
            color: "black"
            opacity: 0.3 * (1 - d.openness)
        }
    }
    // Nothing is pressed while a page moves by itself.
    MouseArea {
        anchors.fill: parent
        enabled: slide.running
    }
    Item {
        objectName: "leadingEdge"
        width: 20
        height: parent.height
        visible: root.depth > 0

        DragHandler {
            id: swipe

            property real speed: 0

            target: null
            xAxis.minimum: 0
            yAxis.enabled: false
            // The finger means to go back before a list beneath it takes the movement for its own.
            dragThreshold: 6
            grabPermissions: PointerHandler.CanTakeOverFromAnything
            onCentroidChanged: {
                if (active)
                    speed = centroid.velocity.x;
            }
            onActiveTranslationChanged: {
                if (active)
                    d.openness = Math.max(0, Math.min(1, activeTranslation.x / root.width));
            }
            onActiveChanged: {
                if (active) {
                    slide.complete();
                    speed = 0;
                    d.moving = true;
                    d.lowestSeen = root.depth - 1;
                } else if (speed > 300 || (speed > -300 && d.openness > 0.5)) {
                    d.goBack(Qt.OtherFocusReason);
                } else {
                    d.slideTo(0);
                }
            }
        }
    }
    TapHandler {
        acceptedButtons: Qt.BackButton
        // A tap of a finger counts as one of any button.
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onTapped: root.pop()
    }
    Shortcut {
        sequences: ["Alt+Left", "Escape"]
        enabled: root.visible && root.depth > 0
        onActivated: d.goBack(Qt.BacktabFocusReason)
    }
    // A phone's gesture or button comes as this key, and no keyboard is in use for it.
    Shortcut {
        sequences: ["Back"]
        enabled: root.visible && root.depth > 0
        onActivated: root.pop()
    }
}
