import QtQuick
import TrellisportManager.Presentation

// A text that stands on one line and is shortened where that is too short; larger text than usual
// wraps instead.
StyledText {
    wrapMode: Metrics.largeText ? Text.Wrap : Text.NoWrap
    elide: Metrics.largeText ? Text.ElideNone : Text.ElideRight
    maximumLineCount: Metrics.largeText ? 1000 : 1
}
