import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.Settings

// The third root tab: the agent's settings and where its service is.
Screen {
    id: root

    required property SettingsViewModel viewModel
    property LinkController links: LinkController {}

    screenModel: viewModel
    announcement: root.viewModel.isLoading ? "" : qsTr("Settings shown")

    QtObject {
        id: d

        readonly property int saveState: root.viewModel.saveButton
        property int formerState: SettingsViewModel.Save

        onSaveStateChanged: {
            if (saveState === SettingsViewModel.Saved)
                Announcements.say(qsTr("Saved"));
            else if (saveState === SettingsViewModel.Save && formerState === SettingsViewModel.Saving)
                Announcements.say(qsTr("Not saved"));
            formerState = saveState;
        }
    }

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
