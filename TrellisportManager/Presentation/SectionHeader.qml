import QtQuick
import TrellisportManager.Presentation

// The header above a group of rows.
Item {
    id: root

    property alias text: label.text
    property alias color: label.color

    implicitHeight: label.implicitHeight + 6

    StyledText {
        id: label

        objectName: "sectionHeader"
        x: Metrics.inset
        width: parent.width - 2 * Metrics.inset
        textStyle: Typography.Footnote
        font: {
            const style = Typography.font(Typography.Footnote, 0, false, Typography.textScale);
            style.capitalization = Font.AllUppercase;
            return style;
        }
        color: Colors.gray
        Accessible.role: Accessible.Heading
    }
}
