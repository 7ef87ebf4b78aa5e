import QtQuick
import TrellisportManager.Presentation

// The field for an answer, and the button that sends it.
KeptInView {
    id: root

    property alias text: field.text
    // What is answered here, for whom the editors sound alike.
    property string question
    signal typed(string text)
    signal submitted
    // The keyboard leaves the editor at its end, or at its beginning.
    signal tabbed(Item from, bool forward)

    function takeFocus(forward: bool): void {
        if (forward)
            field.field.forceActiveFocus(Qt.TabFocusReason);
        else
            button.forceActiveFocus(Qt.BacktabFocusReason);
    }

    implicitHeight: button.y + button.height

    MultilineField {
        id: field

        objectName: "answerField"
        width: parent.width
        placeholder: qsTr("Type your answer...")
        onEdited: text => root.typed(text)
        onTabbed: forward => {
            if (forward)
                button.forceActiveFocus(Qt.TabFocusReason);
            else
                root.tabbed(field.field, false);
        }
    }
    PressableControl {
        id: button

        objectName: "submitButton"
        y: field.height + Metrics.spacing
        width: parent.width
        text: qsTr("Submit Answer")
        topPadding: 10
        bottomPadding: 10
        onClicked: {
            // What is still being composed is part of the answer.
            InputMethod.commit();
            root.submitted();
        }
        Keys.onTabPressed: root.tabbed(button, true)
        Keys.onBacktabPressed: field.field.forceActiveFocus(Qt.BacktabFocusReason)
        Accessible.name: text
        Accessible.description: root.question

        background: Rectangle {
            objectName: "submitGround"
            radius: 8
            color: Colors.accent
        }
        contentItem: StyledText {
            objectName: "submitLabel"
            horizontalAlignment: Text.AlignHCenter
            text: button.text
            textStyle: Typography.Caption
            weight: Font.Bold
            Accessible.ignored: true
        }
    }
}
