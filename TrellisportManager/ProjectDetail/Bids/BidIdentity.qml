import QtQuick
import TrellisportManager.Presentation

// Who bids: the user name, the shown name, and at the trailing edge the country.
Item {
    id: root

    required property string username
    required property string displayName
    required property string country

    // What is too long for the line is shortened, the shown name before the user name.
    readonly property real nameRoom: width - (countryText.visible ? countryText.width + Metrics.spacing : 0)

    implicitHeight: usernameText.implicitHeight

    component OneLine: StyledText {
        anchors.verticalCenter: parent?.verticalCenter
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
        x: usernameText.width + Metrics.spacing
        width: Math.max(0, Math.min(implicitWidth, root.nameRoom - x))
        visible: root.displayName.length > 0
        text: root.displayName
        textStyle: Typography.Caption
        color: Colors.gray
    }
    OneLine {
        id: countryText

        objectName: "country"
        x: parent.width - width
        width: Math.min(implicitWidth, parent.width * 0.4)
        visible: root.country.length > 0
        text: root.country
        textStyle: Typography.Caption2
        color: Colors.gray
    }
}
