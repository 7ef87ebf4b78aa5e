import QtQuick
import TrellisportManager.Presentation

// Who bids: the user name, the shown name, and at the trailing edge the country.
Item {
    id: root

    required property string username
    required property string displayName
    required property string country

    // Larger text may have room for one of them on a line.
    readonly property bool stacked: Metrics.largeText && usernameText.implicitWidth + Metrics.spacing + countryText.implicitWidth > width
    readonly property real nameRoom: width - (!stacked && countryText.visible ? countryText.width + Metrics.spacing : 0)
    // A shown name for which there is no room beside the user name stands below it.
    readonly property bool fits: usernameText.implicitWidth + Metrics.spacing + displayNameText.implicitWidth <= nameRoom

    readonly property real namesHeight: usernameText.height + (fits || !displayNameText.visible ? 0 : 2 + displayNameText.height)

    implicitHeight: namesHeight + (stacked && countryText.visible ? 2 + countryText.height : 0)

    LineText {
        id: usernameText

        objectName: "username"
        width: Math.min(implicitWidth, root.nameRoom)
        text: root.username
        textStyle: Typography.Caption
        weight: Font.Bold
    }
    LineText {
        id: displayNameText

        objectName: "displayName"
        x: root.fits ? usernameText.width + Metrics.spacing : 0
        y: root.fits ? 0 : usernameText.height + 2
        width: Math.min(implicitWidth, root.width - x)
        visible: root.displayName.length > 0
        text: root.displayName
        textStyle: Typography.Caption
        color: Colors.gray
    }
    LineText {
        id: countryText

        objectName: "country"
        x: root.stacked ? 0 : parent.width - width
        y: root.stacked ? root.namesHeight + 2 : (usernameText.height - height) / 2
        width: Math.min(implicitWidth, parent.width * (root.stacked ? 1 : 0.4))
        visible: root.country.length > 0
        text: root.country
        textStyle: Typography.Caption2
        color: Colors.gray
    }
}
