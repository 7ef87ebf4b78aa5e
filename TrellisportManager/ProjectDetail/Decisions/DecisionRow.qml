pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// A decision: its status and time, the question, and below it the editor of one that waits or the
// answer of one that was given.
CardRow {
    id: root

    required property string decisionId
    required property string status
    required property bool isPending
    required property bool hasTime
    required property string time
    required property string question
    required property bool showsQuestion
    required property bool questionEnds
    required property string answer
    required property bool showsAnswer
    required property bool answerStarts
    required property bool answerEnds
    required property string typedAnswer

    readonly property bool showsEditor: isPending && questionEnds
    readonly property real questionBottom: showsQuestion ? questionText.y + questionText.height : 0

    signal typed(string text)
    signal submitted
    signal tabbed(Item from, bool forward)

    function takeFocus(forward: bool): void {
        (editor.item as DecisionEditor)?.takeFocus(forward);
    }

    // The editors of all cards sound alike; the card says what they are for.
    Accessible.name: question

    outlineColor: isPending ? Colors.faded(Colors.yellow, 0.5) : Colors.hairline
    contentHeight: {
        if (showsEditor)
            return editor.y + editor.height;
        return showsAnswer ? answerBox.y + answerBox.height : questionBottom;
    }

    Item {
        id: header

        // Larger text stands below the badge where it does not fit beside it.
        readonly property bool stacked: Metrics.largeText && root.hasTime && badge.implicitWidth + Metrics.spacing + timeText.implicitWidth > width
        readonly property real lineHeight: stacked ? badge.height : Math.max(badge.height, timeText.height)

        width: parent.width
        height: lineHeight + (stacked ? 4 + timeText.height : 0)
        visible: root.first

        Item {
            width: parent.width
            height: header.lineHeight

            StatusBadge {
                id: badge

                objectName: "status"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width - (root.hasTime && !header.stacked ? timeText.width + Metrics.spacing : 0))
                status: root.status
            }
        }
        Item {
            y: header.stacked ? header.lineHeight + 4 : 0
            width: parent.width
            height: header.stacked ? timeText.height : header.lineHeight

            LineText {
                id: timeText

                objectName: "time"
                x: header.stacked ? 0 : parent.width - width
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, Metrics.largeText ? parent.width : parent.width / 2)
                visible: root.hasTime
                text: root.time
                systemSize: 10
                color: Colors.dimText
            }
        }
    }
    PieceText {
        id: questionText

        part: 0
        objectName: "question"
        y: root.first ? header.height + Metrics.spacing : 0
        width: parent.width
        visible: root.showsQuestion
        text: root.question
        textStyle: Typography.Subheadline
    }
    ItemHolder {
        id: editor

        y: root.questionBottom + Metrics.spacing
        width: parent.width
        component: root.showsEditor ? answerEditor : null
    }
    AnswerBox {
        id: answerBox

        objectName: "answerBox"
        y: root.questionBottom + (root.answerStarts ? Metrics.spacing : 0)
        width: parent.width
        visible: root.showsAnswer
        first: root.answerStarts
        last: root.answerEnds
        label: qsTr("Answer:")
        text: root.answer
    }

    Component {
        id: answerEditor

        DecisionEditor {
            text: root.typedAnswer
            question: root.question
            onTyped: text => root.typed(text)
            onSubmitted: root.submitted()
            onTabbed: (from, forward) => root.tabbed(from, forward)
        }
    }
}
