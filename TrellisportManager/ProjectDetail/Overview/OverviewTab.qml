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

        required property string title
        required property string body

        gap: 16
        radius: 10
        contentHeight: bodyText.y + bodyText.height

        StyledText {
            id: titleText

            objectName: "cardTitle"
            width: parent.width
            visible: row.first
            text: row.title
            textStyle: Typography.Caption
            weight: Font.Bold
        }
        StyledText {
            id: bodyText

            objectName: "body"
            y: row.first ? titleText.height + Metrics.spacing : 0
            width: parent.width
            text: row.body
            textStyle: Typography.Caption
            color: Colors.gray
        }
    }
}
