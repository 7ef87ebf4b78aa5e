import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// A day's report: its date, what was committed, and how the agent's notes changed.
CardRow {
    id: root

    required property string date
    required property bool showsDate
    required property string commits
    required property bool showsCommits
    required property bool commitsStart
    required property string changes
    required property bool showsChanges
    required property bool changesStart

    readonly property real dateBottom: showsDate ? dateText.height : 0
    readonly property real commitsBottom: showsCommits ? commitsPart.y + commitsPart.height : dateBottom

    contentHeight: showsChanges ? changesPart.y + changesPart.height : commitsBottom

    PieceText {
        id: dateText

        part: 0
        objectName: "date"
        width: parent.width
        visible: root.showsDate
        text: root.date
        textStyle: Typography.Caption
        weight: Font.Bold
        color: Colors.accent
    }
    LabeledText {
        id: commitsPart

        objectName: "commits"
        part: 1
        y: root.dateBottom + (root.commitsStart ? Metrics.spacing : 0)
        width: parent.width
        visible: root.showsCommits
        label: qsTr("Commits")
        showsLabel: root.commitsStart
        text: root.commits
        textColor: Colors.white
    }
    LabeledText {
        id: changesPart

        objectName: "changes"
        part: 2
        y: root.commitsBottom + (root.changesStart ? Metrics.spacing : 0)
        width: parent.width
        visible: root.showsChanges
        label: qsTr("Changes")
        showsLabel: root.changesStart
        text: root.changes
        textColor: Colors.gray
        monospaced: true
    }
}
