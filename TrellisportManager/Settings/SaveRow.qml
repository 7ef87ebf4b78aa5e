import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.Settings

// The save button: what it shows follows its state; it can be pressed in every one.
PressableRow {
    id: root

    required property int saveState

    objectName: "saveButton"
    groundColor: Colors.accent
    Accessible.name: {
        switch (root.saveState) {
        case SettingsViewModel.Saving:
            return qsTr("Saving");
        case SettingsViewModel.Saved:
            return qsTr("Saved");
        default:
            return qsTr("Save Changes");
        }
    }

    contentItem: Item {
        implicitHeight: Typography.lineHeight(Typography.Body, Typography.textScale) + 2 * 4

        Spinner {
            objectName: "savingSpinner"
            anchors.centerIn: parent
            visible: root.saveState === SettingsViewModel.Saving
            color: Colors.white
        }
        Row {
            objectName: "savedLabel"
            anchors.centerIn: parent
            visible: root.saveState === SettingsViewModel.Saved
            spacing: 6

            SymbolImage {
                objectName: "savedSymbol"
                anchors.verticalCenter: parent.verticalCenter
                width: Metrics.symbolSize(20)
                height: width
                symbol: "checkmark.circle.fill"
                color: Colors.green
            }
            StyledText {
                text: qsTr("Saved")
                color: Colors.green
            }
        }
        StyledText {
            anchors.centerIn: parent
            visible: root.saveState === SettingsViewModel.Save
            text: qsTr("Save Changes")
        }
    }
}
