import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.Settings

// The third root tab: the agent's settings and where its service is.
Screen {
    id: root

    required property SettingsViewModel viewModel
    property LinkController links: LinkController {}

    screenModel: viewModel

    NavigationPage {
        id: page

        anchors.fill: parent
        title: qsTr("Settings")

        scrollArea: Flickable {
            id: area

            objectName: "settingsScroll"
            contentWidth: width
            contentHeight: column.height
            bottomMargin: Metrics.groupSpacing + avoidance.coveredBelow

            Column {
                id: column

                x: Math.round(SafeArea.left + (page.safeWidth - width) / 2)
                width: Math.min(page.safeWidth, Metrics.readableWidth) - 2 * Metrics.inset
                topPadding: Metrics.spacing

                SpinnerRow {
                    width: column.width
                    visible: root.viewModel.isLoading
                }
                SettingsSections {
                    objectName: "sections"
                    width: column.width
                    visible: !root.viewModel.isLoading
                    viewModel: root.viewModel
                    links: root.links
                }
            }
        }
    }
    KeyboardAvoidance {
        id: avoidance

        scrollArea: area
        coveredAbove: page.barHeight
    }
}
