import QtQuick
import TrellisportManager.Presentation

// A large figure on one line. One that is wider than its tile is drawn smaller, never cut.
StyledText {
    textStyle: Typography.Title
    weight: Font.Bold
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.NoWrap
    fontSizeMode: Text.HorizontalFit
    minimumPixelSize: 8
    // Beyond that only figures that no agent earns are shortened.
    elide: Text.ElideRight
    maximumLineCount: 1
}
