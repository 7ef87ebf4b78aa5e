import QtQuick
import TrellisportManager.Presentation

// A screen's page: a title bar over one scroll area that fills the page, with a large title that
// collapses into the bar as the content scrolls, and pull to refresh where the screen offers it.
Rectangle {
    id: root

    property string title
    property bool largeTitle: true
    // Whether the scroll area takes the keyboard where there is more than is seen, to be scrolled by
    // keys; one whose rows are walked through by them leaves it to the rows.
    property bool scrolledByKeys: true
    property string backTitle
    // The scroll area; it is laid over the whole page and its margins are kept by the page.
    required property Flickable scrollArea
    // What stands between the large title and the content, in the scroll area, and scrolls with it.
    // A list's own header would do, but cannot see the page that it is part of before Qt 6.5.
    property Item header: null
    property alias refreshable: refresh.enabled
    property alias refreshing: refresh.refreshing
    signal refreshRequested
    signal backRequested

    readonly property alias barHeight: bar.height
    readonly property alias copying: copying
    readonly property real safeWidth: width - SafeArea.left - SafeArea.right
    readonly property real titleHeight: largeTitle ? Metrics.largeTitleHeight : 0
    // How far the content has been scrolled from its resting place; below 0 while it is pulled.
    readonly property real scrolled: scrollArea.contentY - scrollArea.originY + scrollArea.topMargin - refresh.restHeight

    // Where a keyboard leaves little room, the large title is seen whole or not at all: what is
    // typed in often comes into view with half of it.
    readonly property bool titleInBar: scrolled > 0.5 && Window.height < Metrics.lowHeight

    // Content that rests at its top stays there when the margin above it changes; content that was
    // scrolled, or that a finger holds, stays where it is.
    function applyMargin(): void {
        const area = root.scrollArea;
        const rested = area.contentY - area.originY <= 0.5 - d.appliedMargin;
        d.appliedMargin = d.margin;
        area.topMargin = d.margin;
        if (rested && !area.dragging)
            area.contentY = area.originY - d.margin;
    }

    onRefreshingChanged: {
        if (!refreshing && visible)
            Announcements.say(qsTr("Reload ended"));
    }

    color: Colors.background
    Component.onCompleted: applyMargin()
    // What the rows themselves make nothing of scrolls the page.
    Keys.forwardTo: [keys]

    QtObject {
        id: d

        readonly property real margin: bar.height + root.titleHeight + (root.header?.height ?? 0) + refresh.restHeight
        property real appliedMargin: 0

        onMarginChanged: root.applyMargin()
    }
    Item {
        id: holder

        anchors.fill: parent
        children: [root.scrollArea]
    }
    // Content of exactly the page's height is pulled like any other.
    Binding {
        target: root.scrollArea
        property: "flickableDirection"
        value: Flickable.VerticalFlick
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: root.scrollArea
        property: "width"
        value: holder.width
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: root.scrollArea
        property: "height"
        value: holder.height
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: root.scrollArea
        property: "activeFocusOnTab"
        value: keys.takesTab
        when: root.scrolledByKeys
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: root.header
        property: "y"
        value: root.scrollArea.originY - (root.header?.height ?? 0)
        when: root.header
        restoreMode: Binding.RestoreNone
    }
    ScrollKeys {
        id: keys

        anchors.fill: parent
        anchors.topMargin: bar.height
        scrollArea: root.scrollArea
    }
    ScrollMark {
        // The area's own would be scrolled out from under the bar.
        objectName: "scrollMark"
        x: root.width - SafeArea.right - width
        y: bar.height
        height: root.height - y
        orientation: Qt.Vertical
        size: root.scrollArea.visibleArea.heightRatio
        position: root.scrollArea.visibleArea.yPosition
        active: root.scrollArea.movingVertically
        onPositionChanged: {
            if (pressed)
                keys.scrollTo(keys.topY + position * root.scrollArea.height / size);
        }
    }
    CopyGesture {
        id: copying

        area: root.scrollArea.contentItem
    }
    LargeTitle {
        id: large

        visible: root.largeTitle && !root.titleInBar && y + height > bar.height
        y: bar.height - Math.max(0, root.scrolled)
        x: Math.round(SafeArea.left + (root.safeWidth - width) / 2)
        width: Math.min(root.safeWidth, Metrics.readableWidth)
        title: root.title
    }
    PullToRefresh {
        id: refresh

        flickable: root.scrollArea
        contentTop: bar.height + root.titleHeight
        enabled: false
        onTriggered: root.refreshRequested()
    }
    TitleBar {
        id: bar

        width: parent.width
        title: root.title
        backTitle: root.backTitle
        headlineOpacity: root.largeTitle && !root.titleInBar ? Math.max(0, Math.min(1, (root.scrolled - root.titleHeight + 16) / 12)) : 1
        onBackRequested: root.backRequested()
    }
    Shortcut {
        sequences: ["F5", "Ctrl+R"]
        enabled: root.visible && refresh.enabled && !refresh.refreshing
        onActivated: root.refreshRequested()
    }
}
