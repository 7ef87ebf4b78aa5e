pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// A project's description and its delivery plan, whole and as they came.
CardList {
    id: root

    required property projectRecord project

    objectName: "overview"
    Accessible.name: qsTr("Overview")
    model: OverviewRows {
        project: root.project
    }
    delegate: CardRow {
        id: row

        required title
        required property string body

        gap: 16
        radius: 10
        titled: true
        contentHeight: bodyText.height

        PieceText {
            id: bodyText

            part: 0
            objectName: "body"
            width: parent.width
            text: row.body
            textStyle: Typography.Caption
            color: Colors.gray
        }
    }
}
