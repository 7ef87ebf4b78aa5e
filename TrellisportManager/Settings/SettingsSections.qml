import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.Settings

// The four sections, once the settings have been loaded or could not be.
Column {
    id: root

    required property SettingsViewModel viewModel
    required property LinkController links

    spacing: Metrics.groupSpacing

    ListGroup {
        width: root.width
        header: qsTr("Operation Mode")

        LabeledRow {
            width: root.width
            label: qsTr("Preview Mode")

            SwitchControl {
                objectName: "previewMode"
                checked: root.viewModel.previewMode
                tint: Colors.accent
                onToggled: root.viewModel.previewMode = checked
                Accessible.name: qsTr("Preview Mode")
            }
        }
        ListRow {
            width: root.width
            contentItem: StyledText {
                text: qsTr("When enabled, only 1 active bid at a time")
                textStyle: Typography.Caption
                color: Colors.gray
                verticalAlignment: Text.AlignVCenter
            }
        }
    }
    ListGroup {
        width: root.width
        header: qsTr("Bid Limits")

        LabeledRow {
            width: root.width
            label: qsTr("Max Daily Bids")

            RowField {
                objectName: "maxDailyBids"
                width: 60 * Typography.textScale
                label: qsTr("Max Daily Bids")
                placeholderText: "10"
                inputMethodHints: Qt.ImhDigitsOnly
                text: root.viewModel.maxDailyBids
                onTextEdited: root.viewModel.maxDailyBids = text
            }
        }
        LabeledRow {
            width: root.width
            label: qsTr("Revenue Target ($)")

            RowField {
                objectName: "dailyRevenueTarget"
                width: 80 * Typography.textScale
                label: qsTr("Revenue Target ($)")
                placeholderText: "10000"
                inputMethodHints: Qt.ImhFormattedNumbersOnly
                text: root.viewModel.dailyRevenueTarget
                onTextEdited: root.viewModel.dailyRevenueTarget = text
            }
        }
        LabeledRow {
            width: root.width
            label: qsTr("Max Concurrent")

            RowField {
                objectName: "maxConcurrentProjects"
                width: 60 * Typography.textScale
                label: qsTr("Max Concurrent")
                placeholderText: "5"
                inputMethodHints: Qt.ImhDigitsOnly
                text: root.viewModel.maxConcurrentProjects
                onTextEdited: root.viewModel.maxConcurrentProjects = text
            }
        }
    }
    ListGroup {
        width: root.width

        SaveRow {
            width: root.width
            saveState: root.viewModel.saveButton
            onClicked: {
                // What is still being composed is part of what is saved.
                InputMethod.commit();
                root.viewModel.save();
            }
        }
    }
    ListGroup {
        width: root.width
        header: qsTr("About")

        ValueRow {
            width: root.width
            label: qsTr("Server")
            value: "trellisport-base"
        }
        LabeledRow {
            id: webRow

            width: root.width
            label: qsTr("Dashboard")
            trailingWidth: webLink.implicitWidth

            LinkText {
                id: webLink

                objectName: "webLink"
                width: Math.min(implicitWidth, webRow.trailingRoom)
                text: root.viewModel.hostName
                url: root.viewModel.webAddress
                links: root.links
                wrapMode: Metrics.largeText ? Text.Wrap : Text.NoWrap
                elide: Metrics.largeText ? Text.ElideNone : Text.ElideRight
                maximumLineCount: Metrics.largeText ? 1000 : 1
            }
        }
    }
}
