import QtQuick
import TrellisportManager.Presentation

// Who bids: the user name, the shown name, and at the trailing edge the country.
Item {
    id: root

    required property string username
    required property string displayName
    required property string country

    readonly property real nameRoom: width - (countryText.visible ? countryText.width + Metrics.spacing : 0)
    // A shown name for which there is no room beside the user name stands below it.
    readonly property bool fits: usernameText.implicitWidth + Metrics.spacing + displayNameText.implicitWidth <= nameRoom

    implicitHeight: usernameText.height + (fits || !displayNameText.visible ? 0 : 2 + displayNameText.height)

    component OneLine: StyledText {
        wrapMode: Text.NoWrap
        maximumLineCount: 1
        elide: Text.ElideRight
    }

    OneLine {
        id: usernameText

        objectName: "username"
        width: Math.min(implicitWidth, root.nameRoom)
        text: root.username
        textStyle: Typography.Caption
        weight: Font.Bold
    }
    OneLine {
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
    OneLine {
        id: countryText

        objectName: "country"
        x: parent.width - width
        y: (usernameText.height - height) / 2
        width: Math.min(implicitWidth, parent.width * 0.4)
        visible: root.country.length > 0
        text: root.country
        textStyle: Typography.Caption2
        color: Colors.gray
    }
}
