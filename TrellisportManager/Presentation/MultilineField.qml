import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// A text field of several lines on a ground of its own. It grows with its text from the least to
// the greatest number of lines and scrolls inside from there on. Tab leaves it.
KeptInView {
    id: root

    // What the field holds; its owner is told of every change and sets it in return.
    property string text
    property string placeholder
    property int minimumLines: 3
    property int maximumLines: 6
    property real inset: 10
    property alias color: ground.color
    property alias radius: ground.radius
    readonly property Item field: area
    signal edited(string text)
    // The keyboard is to go on to the control behind the field, or back to the one before it.
    signal tabbed(bool forward)

    readonly property real lineHeight: Typography.lineHeight(Typography.Caption, Typography.textScale)

    // The lines of a text area are as high as their fonts are, which may be less.
    implicitHeight: Math.max(minimumLines * lineHeight, Math.min(maximumLines * lineHeight, Math.max(area.lineCount * lineHeight, area.contentHeight))) + 2 * inset

    onTextChanged: area.follow()

    Surface {
        id: ground

        objectName: "fieldGround"
        anchors.fill: parent
        color: Colors.innerSurface
        radius: 8
    }
    Flickable {
        id: scroll

        function reveal(cursor: rect): void {
            if (cursor.y < contentY + root.inset)
                contentY = Math.max(0, cursor.y - root.inset);
            else if (cursor.y + cursor.height > contentY + height - root.inset)
                contentY = Math.min(contentHeight - height, cursor.y + cursor.height + root.inset - height);
        }

        anchors.fill: parent
        contentHeight: area.height
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        onHeightChanged: reveal(area.cursorRectangle)

        T.TextArea {
            id: area

            readonly property bool visualFocus: activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason)

            // The text is set only when it is another: setting it moves the cursor.
            function follow(): void {
                if (EditedText.of(textDocument) !== root.text)
                    text = root.text;
            }

            objectName: "field"
            width: scroll.width
            height: Math.max(scroll.height, contentHeight + 2 * root.inset)
            padding: root.inset
            font: Typography.font(Typography.Caption, 0, false, Typography.textScale)
            color: Colors.white
            placeholderText: root.placeholder
            placeholderTextColor: Colors.placeholderText
            selectionColor: Colors.accent
            selectedTextColor: Colors.white
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            cursorDelegate: TextCursor {}
            Component.onCompleted: follow()
            onTextChanged: {
                const typed = EditedText.of(textDocument);
                if (typed !== root.text)
                    root.edited(typed);
            }
            onCursorRectangleChanged: scroll.reveal(cursorRectangle)
            Keys.priority: Keys.BeforeItem
            Keys.onTabPressed: root.tabbed(true)
            Keys.onBacktabPressed: root.tabbed(false)
            // Escape leaves the field first; what is typed must not go with the page around it.
            Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
            Keys.onEscapePressed: area.focus = false

            Accessible.name: root.placeholder

            StyledText {
                objectName: "placeholder"
                x: root.inset
                y: root.inset
                width: parent.width - 2 * root.inset
                visible: area.length === 0 && area.preeditText.length === 0
                text: root.placeholder
                textStyle: Typography.Caption
                color: Colors.placeholderText
                Accessible.ignored: true
            }
        }
    }
    FocusRing {
        control: area
        radius: 11
    }
}
