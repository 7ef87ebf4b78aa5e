import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// A question, whether it is answered, and the answer.
CardRow {
    id: root

    required property string question
    required property bool showsQuestion
    required property bool showsState
    required property bool isAnswered
    required property string answer
    required property bool showsAnswer
    required property bool answerStarts
    required property bool answerEnds

    readonly property real questionHeight: showsQuestion ? questionText.height : 0
    readonly property real answerTop: showsState ? state.y + state.height : questionHeight

    contentHeight: showsAnswer ? answerBox.y + answerBox.height : answerTop

    PieceText {
        id: questionText

        part: 0
        objectName: "question"
        width: parent.width
        visible: root.showsQuestion
        text: root.question
        textStyle: Typography.Subheadline
    }
    Item {
        id: state

        readonly property color tint: root.isAnswered ? Colors.green : Colors.yellow

        y: root.questionHeight + Metrics.spacing
        width: parent.width
        height: stateText.height
        visible: root.showsState

        Rectangle {
            objectName: "stateDot"
            anchors.verticalCenter: parent.verticalCenter
            width: 6
            height: 6
            radius: 3
            color: state.tint
        }
        StyledText {
            id: stateText

            objectName: "state"
            x: 6 + 4
            text: root.isAnswered ? qsTr("Answered") : qsTr("Waiting")
            systemSize: 10
            color: state.tint
        }
    }
    AnswerBox {
        id: answerBox

        y: root.answerTop + (root.answerStarts ? Metrics.spacing : 0)
        width: parent.width
        visible: root.showsAnswer
        first: root.answerStarts
        last: root.answerEnds
        text: root.answer
    }
}
