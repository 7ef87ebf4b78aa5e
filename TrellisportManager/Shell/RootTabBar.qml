import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// The three root tabs at the window's foot.
Rectangle {
    id: root

    property int selectedTab: 0
    signal selected(int tab)

    implicitHeight: Metrics.tabBarHeight + SafeArea.bottom
    color: Colors.background

    Hairline {
        width: parent.width
    }
    T.TabBar {
        id: bar

        readonly property real tabWidth: Math.round(width / 3)

        // On whole points, as every symbol below must be to be sharp.
        x: Math.round(SafeArea.left + (parent.width - SafeArea.left - SafeArea.right - width) / 2)
        width: Math.min(parent.width - SafeArea.left - SafeArea.right, Metrics.readableWidth)
        height: Metrics.tabBarHeight
        currentIndex: root.selectedTab
        onCurrentIndexChanged: {
            if (currentIndex !== root.selectedTab)
                root.selected(currentIndex);
        }

        contentItem: Row {
            Repeater {
                model: bar.contentModel
            }
        }

        RootTabButton {
            width: bar.tabWidth
            text: qsTr("Dashboard")
            symbol: "chart.bar.fill"
        }
        RootTabButton {
            width: bar.tabWidth
            text: qsTr("Projects")
            symbol: "folder.fill"
        }
        RootTabButton {
            width: bar.width - 2 * bar.tabWidth
            text: qsTr("Settings")
            symbol: "gearshape.fill"
        }
    }
    Connections {
        function onSelectedTabChanged(): void {
            bar.setCurrentIndex(root.selectedTab);
        }

        target: root
    }
}
