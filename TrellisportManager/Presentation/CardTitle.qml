import QtQuick
import TrellisportManager.Presentation

// A card's title.
StyledText {
    objectName: "cardTitle"
    textStyle: Typography.Caption
    weight: Font.Bold
    color: Colors.white
}
