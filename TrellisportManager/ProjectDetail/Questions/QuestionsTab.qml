import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// The agent's questions to a project's client, and what the client has answered.
Item {
    id: root

    required property projectRecord project

    CardList {
        objectName: "list"
        anchors.fill: parent
        Accessible.name: qsTr("Questions")
        model: QuestionRows {
            id: rows

            project: root.project
        }
        delegate: QuestionRow {}
    }
    EmptyText {
        width: parent.width
        visible: rows.isEmpty
        text: qsTr("No questions generated yet")
    }
}
